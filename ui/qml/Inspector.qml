import QtQuick
import QtQuick.Layouts
import Stackreel

/// The column at the right: the output settings, the properties of the source, and the export button.
Rectangle {
    id: inspector

    required property WindowModel model
    readonly property bool exporting: model.phase === WindowModel.Exporting

    /// Requests that screen readers read the text.
    signal announceRequested(text: string)

    implicitWidth: 310
    implicitHeight: column.implicitHeight + 44
    color: Theme.panel
    radius: 10

    ColumnLayout {
        id: column

        anchors.fill: parent
        anchors.margins: 22
        spacing: 26

        FrameSection {
            Layout.fillWidth: true
            model: inspector.model
            onAnnounceRequested: text => inspector.announceRequested(text)
        }

        ColumnLayout {
            objectName: "audioSection"
            Layout.fillWidth: true
            spacing: 12

            SectionTitle {
                objectName: "audioTitle"
                text: qsTr("Audio")
            }

            OnOffSwitch {
                objectName: "audioSwitch"
                Layout.fillWidth: true
                text: qsTr("Include audio")
                checked: inspector.model.includeAudio
                onToggled: inspector.model.includeAudio = checked
            }
        }

        ColumnLayout {
            objectName: "sourceSection"
            Layout.fillWidth: true
            spacing: 12
            visible: inspector.model.hasMedia

            SectionTitle {
                objectName: "sourceTitle"
                text: qsTr("Source")
            }

            FactRow {
                objectName: "frameFact"
                label: qsTr("Frame")
                value: inspector.model.frameFact
            }

            FactRow {
                objectName: "videoFact"
                label: qsTr("Video")
                value: inspector.model.videoFact
            }

            FactRow {
                objectName: "lengthFact"
                label: qsTr("Length")
                value: inspector.model.lengthFact
            }
        }

        Item {
            Layout.fillHeight: true
            Layout.topMargin: -column.spacing
        }

        FilledActionButton {
            objectName: "exportButton"
            fillsWidth: true
            text: inspector.exporting ? qsTr("Cancel export") : qsTr("Export vertical video")
            enabled: inspector.model.editable || inspector.exporting
            onClicked: inspector.model.exportOrCancel()
            symbol: enabled ? "icons/arrow-up-right-black.svg" : "icons/arrow-up-right-white.svg"
            busy: inspector.exporting
        }
    }
}
