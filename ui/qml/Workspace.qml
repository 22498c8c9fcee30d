import QtQuick
import QtQuick.Layouts
import Stackreel

/// The workspace: the video, the preparing state or the empty state, and below it the trim timeline.
Rectangle {
    id: workspace

    required property WindowModel model
    readonly property bool showsVideo: model.hasMedia && model.hasPlayer
    readonly property alias firstControl: canvas.firstControl

    color: Theme.stage
    radius: 10

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Item {
            objectName: "canvasArea"
            Layout.fillWidth: true
            Layout.fillHeight: true
            // The label of a small crop at the picture's right edge extends beyond the canvas.
            clip: true

            VideoCanvas {
                id: canvas

                objectName: "videoCanvas"
                anchors.fill: parent
                model: workspace.model
                visible: workspace.showsVideo
            }

            PreparingState {
                objectName: "preparingState"
                anchors.fill: parent
                visible: !workspace.showsVideo && workspace.model.phase === WindowModel.Preparing
            }

            EmptyState {
                objectName: "emptyState"
                anchors.fill: parent
                model: workspace.model
                visible: !workspace.showsVideo && workspace.model.phase !== WindowModel.Preparing
            }
        }

        TrimTimeline {
            objectName: "timeline"
            Layout.fillWidth: true
            Layout.leftMargin: 18
            Layout.rightMargin: 18
            Layout.bottomMargin: 14
            model: workspace.model
            accent: Theme.signalCoral
            visible: workspace.model.editable
        }
    }
}
