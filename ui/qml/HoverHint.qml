import QtQuick
import QtQuick.Templates as T
import Stackreel

/// A tool tip below the parent item. Set `shown` to true while the parent is hovered.
T.ToolTip {
    id: hint

    property bool shown: false

    visible: shown && text.length > 0
    delay: Theme.hintDelay
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? parent.height + 6 : 0
    margins: 8
    padding: 8
    implicitWidth: Math.min(implicitContentWidth + leftPadding + rightPadding, 420)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    closePolicy: T.Popup.CloseOnEscape

    contentItem: Caption {
        objectName: hint.visible ? "hintText" : ""
        text: hint.text
        font: Theme.textFont(12, Font.Medium)
        wrapMode: Text.Wrap
        spoken: false
    }
    background: Rectangle {
        color: Theme.menu
        border.color: Theme.white(0.16)
        radius: 6
    }
}
