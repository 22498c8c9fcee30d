import QtQuick
import Stackreel

/// The preview, the two crops over it, and the preview controls.
Item {
    id: canvas

    required property WindowModel model
    readonly property alias firstControl: topCrop.control

    Item {
        id: area

        anchors.fill: parent
        anchors.margins: 18

        Item {
            id: frame

            readonly property rect fitted: canvas.model.fittedFrame(area.width, area.height, canvas.model.displayAspect)

            objectName: "videoFrame"
            x: fitted.x
            y: fitted.y
            width: fitted.width
            height: fitted.height

            Accessible.role: Accessible.Grouping
            Accessible.name: qsTr("Crops")

            PlayerSurface {
                objectName: "playerSurface"
                anchors.fill: parent
                model: canvas.model
            }

            CropOverlay {
                id: topCrop

                objectName: "topCrop"
                anchors.fill: parent
                label: qsTr("Top")
                color: Theme.signalCoral
                region: canvas.model.topRegion
                panelAspect: canvas.model.panelAspect
                sourceSize: canvas.model.displayedSize
                selected: canvas.model.selectedCrop === 0
                onSelectRequested: canvas.model.selectedCrop = 0
                onRegionEdited: region => canvas.model.topRegion = region
            }

            CropOverlay {
                objectName: "bottomCrop"
                anchors.fill: parent
                label: qsTr("Bottom")
                color: Theme.shellCoral
                region: canvas.model.bottomRegion
                panelAspect: canvas.model.panelAspect
                sourceSize: canvas.model.displayedSize
                selected: canvas.model.selectedCrop === 1
                onSelectRequested: canvas.model.selectedCrop = 1
                onRegionEdited: region => canvas.model.bottomRegion = region
            }
        }
    }

    Row {
        objectName: "previewControls"
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 18
        spacing: 8

        Accessible.role: Accessible.Grouping
        Accessible.name: qsTr("Preview")

        SquareControlButton {
            objectName: "playButton"
            symbol: canvas.model.previewPlaying ? "icons/pause-fill.svg" : "icons/play-fill.svg"
            hint: canvas.model.previewPlaying ? qsTr("Pause preview (Space)") : qsTr("Play preview (Space)")
            Accessible.name: canvas.model.previewPlaying ? qsTr("Pause preview") : qsTr("Play preview")
            onClicked: canvas.model.togglePreviewPlayback()
        }

        SquareControlButton {
            objectName: "muteButton"
            symbol: canvas.model.previewMuted ? "icons/speaker-slash.svg" : "icons/speaker-wave.svg"
            hint: canvas.model.previewMuted ? qsTr("Unmute preview") : qsTr("Mute preview")
            Accessible.name: hint
            onClicked: canvas.model.previewMuted = !canvas.model.previewMuted
        }
    }
}
