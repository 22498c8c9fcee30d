pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Stackreel

/// What the status line cannot show, because it belongs to the source that is loaded: the background exports with a
/// button that cancels them, and messages, which stay until they are dismissed.
Rectangle {
    id: notice

    required property WindowModel model

    component SmallButton: OutlineActionButton {
        font: Theme.textFont(13, Font.Bold)
        horizontalPadding: 12
        verticalPadding: 6
    }

    /// Adds a message above the earlier ones.
    function add(message: string) {
        messages.insert(0, { message: message });
        messageRows.scrollTo(0);
    }

    objectName: "notice"
    implicitHeight: sections.implicitHeight + 10
    visible: exports.count > 0 || messages.count > 0
    color: Theme.menu
    border.color: Theme.white(0.16)
    radius: 10

    ListModel {
        id: messages
    }

    // Presses do not reach the crops below, and the pointer does not have their shape.
    MouseArea {
        anchors.fill: parent
    }

    ColumnLayout {
        id: sections

        anchors.fill: parent
        anchors.leftMargin: 11
        anchors.rightMargin: 5
        anchors.topMargin: 5
        anchors.bottomMargin: 5
        spacing: 0

        ScrolledRows {
            id: exportRows

            objectName: "exportRows"
            Layout.fillWidth: true
            maximumHeight: 116
            visible: exports.count > 0
            activeFocusOnTab: false // its buttons scroll it

            Repeater {
                id: exports

                model: notice.model.backgroundExports
                delegate: RowLayout {
                    id: row

                    required property int index
                    required property string fileName

                    objectName: "exportRow"
                    width: exportRows.rowWidth
                    spacing: 12

                    MessageText {
                        Layout.fillWidth: true
                        message: qsTr("Exporting %1").arg(row.fileName)
                        elide: Text.ElideMiddle
                        maximumLineCount: 1
                    }

                    SmallButton {
                        objectName: "cancelButton"
                        text: qsTr("Cancel")
                        Accessible.name: qsTr("Cancel export of %1").arg(row.fileName)
                        onClicked: notice.model.cancelBackgroundExport(row.index)
                        onActiveFocusChanged: if (activeFocus) exportRows.reveal(row)
                    }
                }
            }
        }

        RowLayout {
            visible: messages.count > 0
            spacing: 7

            ScrolledRows {
                id: messageRows

                objectName: "messageRows"
                Layout.fillWidth: true
                maximumHeight: 132
                Accessible.role: Accessible.List
                Accessible.name: qsTr("Messages")

                Repeater {
                    model: messages
                    delegate: MessageText {
                        objectName: "noticeMessage"
                        width: messageRows.rowWidth
                        wrapMode: Text.Wrap
                        elide: Text.ElideRight
                        maximumLineCount: 2
                    }
                }
            }

            SmallButton {
                objectName: "dismissButton"
                Layout.rightMargin: 5
                text: qsTr("Dismiss")
                onClicked: messages.clear()
            }
        }
    }
}
