import QtQuick
import QtQuick.Templates as T
import Stackreel

/// Base of all buttons in the content: key handling, focus ring, accessible name and tool tip.
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
    // Qt 6.4 does not expose the disabled state to assistive technology.
    Accessible.description: enabled ? "" : qsTr("Not available now")
    Accessible.onPressAction: if (enabled) clicked()

    // While a button has visual focus, the Space key presses it instead of triggering the window's shortcut.
    Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Space && visualFocus
    // A key that is held down clicks only once. A second click could cancel what the first one started.
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
