import QtQuick
import Stackreel

/// A button for a secondary action.
ActionButton {
    id: button

    horizontalPadding: 15
    verticalPadding: 10

    contentItem: Caption {
        objectName: "label"
        text: button.text
        font: button.font
        horizontalAlignment: Text.AlignHCenter
        elide: Text.ElideRight
        opacity: button.enabled ? 1 : 0.42
        spoken: false
    }
    background: Rectangle {
        color: Theme.white(button.down ? 0.16 : 0.09)
        opacity: button.enabled ? 1 : 0.5
        radius: button.cornerRadius
    }
}
