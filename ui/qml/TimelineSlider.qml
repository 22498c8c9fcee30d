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
    required property real step
    // By which a screen reader knows how many decimals a value has, and it would leave out some of a quarter second.
    readonly property real stepSize: Math.min(step, announcesValueOnly ? 0.01 : 1)
    /// The time runs without anybody stepping it.
    property bool running: false
    property bool stepping: false

    // What assistive technology is told of changes.
    readonly property bool changesByItself: running && !stepping
    readonly property bool announcesValueOnly: step < 1

    signal stepped(direction: int)

    function move(direction: int) {
        stepping = true;
        stepped(direction);
        stepping = false;
    }

    Keys.onLeftPressed: move(-1)
    Keys.onDownPressed: move(-1)
    Keys.onRightPressed: move(1)
    Keys.onUpPressed: move(1)

    Accessible.role: Accessible.Slider
    Accessible.name: name
    Accessible.description: valueText
    Accessible.onIncreaseAction: move(1)
    Accessible.onDecreaseAction: move(-1)
}
