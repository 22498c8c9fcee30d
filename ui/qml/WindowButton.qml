import QtQuick
import QtQuick.Templates as T
import Stackreel

/// A button of the title bar, such as "Close". It takes no keyboard focus, as in other title bars: the window manager
/// has shortcuts for these actions.
T.Button {
    id: button

    property color hoverColor: Theme.white(0.1)

    implicitWidth: 42
    hoverEnabled: true
    focusPolicy: Qt.NoFocus

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: clicked()

    contentItem: Item {
        Image {
            anchors.centerIn: parent
            source: button.icon.source
            sourceSize.width: 16
            sourceSize.height: 16
            opacity: button.hovered ? 1 : 0.78
        }
    }
    background: Rectangle {
        color: button.hovered || button.down ? button.hoverColor : "transparent"
        opacity: button.down ? 0.7 : 1
    }

    HoverHint {
        text: button.text
        shown: button.hovered && !button.down
    }
}
