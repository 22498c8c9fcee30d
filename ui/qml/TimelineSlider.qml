import QtQuick
import Stackreel

/// A time on the timeline that keys and assistive technology change like a slider. The timeline handles the pointer.
FocusItem {
    id: slider

    required property string name
    required property string valueText
    required property real seconds
    // Qt exposes the properties with these names to assistive technology, which can set the value.
    property real value: seconds
    readonly property real minimumValue: 0
    required property real maximumValue
    required property real step
    // Screen readers derive the number of decimals from the step size. A step of 0.25 s would hide the second decimal.
    readonly property real stepSize: Math.min(step, announcesValueOnly ? 0.01 : 1)
    /// Whether the player also changes the time, which it may do even after a pause.
    property bool followsPlayer: false
    property bool dragged: false
    property bool stepping: false

    // These two properties determine which changes are reported to assistive technology (`AccessibleChanges.h`).
    readonly property bool changesByItself: followsPlayer && !stepping && !dragged
    readonly property bool announcesValueOnly: step < 1

    signal stepped(direction: int)
    signal timeRequested(time: real)

    function move(direction: int) {
        stepping = true;
        stepped(direction);
        stepping = false;
    }

    onValueChanged: {
        if (value === seconds)
            return;
        const time = value;
        // Setting the value has removed the binding.
        value = Qt.binding(() => seconds);
        stepping = true;
        timeRequested(time);
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
