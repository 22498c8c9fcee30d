import QtQuick
import QtQuick.Templates as T

/// A time on the timeline as a slider for keys and assistive technology; the pointer is the timeline's business.
T.Control {
    id: slider

    required property string name
    required property string valueText
    // Read under these names by the accessibility bridge; seconds.
    property real value
    property real minimumValue: 0
    property real maximumValue
    property real stepSize

    signal stepped(direction: int)

    focusPolicy: Qt.TabFocus

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
