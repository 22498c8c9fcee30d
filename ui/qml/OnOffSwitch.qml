import QtQuick
import QtQuick.Templates as T
import Stackreel

/// A labelled switch.
T.Switch {
    id: control

    implicitWidth: implicitContentWidth + leftPadding + rightPadding + spacing + indicator.width
    implicitHeight: Math.max(implicitContentHeight, indicator.height) + topPadding + bottomPadding
    spacing: 12
    font: Theme.textFont(13, Font.Medium)

    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onToggleAction: flip()
    Accessible.onPressAction: flip()

    Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Space && visualFocus
    // A key that is held down toggles only once.
    Keys.onPressed: event => event.accepted = event.isAutoRepeat && event.key === Qt.Key_Space
    Keys.onReleased: event => event.accepted = event.isAutoRepeat && event.key === Qt.Key_Space

    /// Toggles the switch and emits `toggled`, as a click does.
    function flip() {
        toggle();
        toggled();
    }

    contentItem: Caption {
        rightPadding: control.indicator.width + control.spacing
        text: control.text
        font: control.font
        verticalAlignment: Text.AlignVCenter
        spoken: false
    }
    indicator: Rectangle {
        x: control.width - width
        y: (control.height - height) / 2
        width: 38
        height: 22
        radius: height / 2
        color: control.checked ? Theme.signalCoral : Theme.white(0.2)

        Rectangle {
            objectName: "knob"
            x: control.checked ? parent.width - width - 2 : 2
            y: 2
            width: 18
            height: 18
            radius: 9
            color: "white"

            Behavior on x {
                enabled: !MotionPreference.reduced

                NumberAnimation {
                    duration: 120
                    easing.type: Easing.OutCubic
                }
            }
        }

        FocusRing {
            parentRadius: 11
            visible: control.visualFocus
        }
    }
}
