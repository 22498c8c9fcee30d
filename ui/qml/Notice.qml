import QtQuick
import Stackreel

/// Messages that the status line cannot show, because it belongs to the source that is loaded. They stay until they are
/// dismissed.
Rectangle {
    id: notice

    property string messages

    /// Adds a line.
    function add(message: string) {
        messages += (messages.length > 0 ? "\n" : "") + message;
    }

    objectName: "notice"
    implicitHeight: Math.max(lines.implicitHeight, dismissButton.implicitHeight) + 20
    visible: messages.length > 0
    color: Theme.menu
    border.color: Theme.white(0.16)
    radius: 10

    // Presses do not reach the crops below.
    MouseArea {
        anchors.fill: parent
    }

    Caption {
        id: lines

        objectName: "noticeText"
        anchors.left: parent.left
        anchors.leftMargin: 16
        anchors.right: dismissButton.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        text: notice.messages
        font: Theme.textFont(14, Font.Medium)
        wrapMode: Text.Wrap
        elide: Text.ElideRight
        maximumLineCount: 8
    }

    OutlineActionButton {
        id: dismissButton

        objectName: "dismissButton"
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        text: qsTr("Dismiss")
        onClicked: notice.messages = ""
    }
}
