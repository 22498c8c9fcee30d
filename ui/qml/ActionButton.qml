import QtQuick
import QtQuick.Templates as T
import Stackreel

/// What all the window's buttons have in common: the keys, the ring around the focused one, and the name and hint.
T.Button {
    id: button

    property string hint
    property real cornerRadius: 7

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    hoverEnabled: true
    font: Theme.textFont(14, Font.Bold)

    Accessible.role: Accessible.Button
    Accessible.name: text
    // Qt 6.4 tells assistive technology nothing of disabled items.
    Accessible.description: enabled ? "" : qsTr("Not available now")
    Accessible.onPressAction: if (enabled) clicked()

    // A button that shows its focus is pressed by the blank, whatever else that key does in the window.
    Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Space && visualFocus
    // A key that is held presses once, or it would cancel again what it has just started.
    Keys.onPressed: event => {
        const confirms = event.key === Qt.Key_Return || event.key === Qt.Key_Enter;
        event.accepted = confirms || (event.isAutoRepeat && event.key === Qt.Key_Space);
        if (confirms && !event.isAutoRepeat)
            clicked();
    }
    Keys.onReleased: event => event.accepted = event.isAutoRepeat && event.key === Qt.Key_Space

    FocusRing {
        parentRadius: button.cornerRadius
        visible: button.visualFocus
    }

    HoverHint {
        text: button.hint
        shown: button.hovered && !button.down
    }
}
