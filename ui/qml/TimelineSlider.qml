import QtQuick
import Stackreel

/// A time on the timeline as a slider for keys and assistive technology; the pointer is the timeline's business.
FocusItem {
    id: slider

    required property string name
    required property string valueText
    required property real seconds
    // Read under these names by assistive technology, which cannot set them: it steps.
    readonly property real value: seconds
    readonly property real minimumValue: 0
    required property real maximumValue
    required property real stepSize

    signal stepped(direction: int)

    Keys.onLeftPressed: stepped(-1)
    Keys.onDownPressed: stepped(-1)
    Keys.onRightPressed: stepped(1)
    Keys.onUpPressed: stepped(1)

    Accessible.role: Accessible.Slider
    Accessible.name: name
    Accessible.description: valueText
    Accessible.onIncreaseAction: stepped(1)
    Accessible.onDecreaseAction: stepped(-1)
}
