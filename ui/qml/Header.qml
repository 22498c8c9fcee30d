import QtQuick
import QtQuick.Layouts
import Stackreel

/// The title, the status line with the progress bar, and the button that opens another clip.
Item {
    id: header

    required property WindowModel model
    /// Lies behind all other items of the header. Dragging it moves the window.
    readonly property alias dragArea: emptyArea
    readonly property alias chooseControl: chooseButton

    implicitHeight: row.implicitHeight

    Item {
        id: emptyArea

        anchors.fill: parent
    }

    RowLayout {
        id: row

        anchors.fill: parent
        spacing: 8

        ColumnLayout {
            Layout.alignment: Qt.AlignTop
            Layout.fillWidth: true
            spacing: 5

            Caption {
                objectName: "title"
                text: "Stackreel"
                font: Theme.titleFont(30)
                Accessible.role: Accessible.Heading
            }

            StatusLine {
                Layout.fillWidth: true
                message: header.model.phaseMessage
                failed: header.model.phase === WindowModel.Failed
            }

            Item {
                objectName: "progressSlot"
                implicitWidth: 220
                implicitHeight: 3

                ExportProgressBar {
                    objectName: "exportProgress"
                    anchors.fill: parent
                    visible: header.model.phase === WindowModel.Exporting
                }
            }
        }

        OutlineActionButton {
            id: chooseButton

            objectName: "chooseButton"
            Layout.alignment: Qt.AlignTop
            text: qsTr("Choose video")
            visible: header.model.phase !== WindowModel.Empty
            // The shortcut Ctrl+O belongs to the title bar, because this button can be hidden.
            onClicked: header.model.chooseSource()
        }
    }
}
