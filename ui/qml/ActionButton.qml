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
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    FocusRing {
        parentRadius: button.cornerRadius
        visible: button.visualFocus
    }

    HoverHint {
        text: button.hint
        shown: button.hovered && !button.down
    }
}
