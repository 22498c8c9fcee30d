import QtQuick
import Stackreel

/// Shown in the workspace while no clip is loaded.
Item {
    id: state

    required property WindowModel model

    Column {
        anchors.centerIn: parent
        width: Math.min(parent.width - 80, 600)
        spacing: 18

        Caption {
            objectName: "emptyTitle"
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("Pick two views from one clip")
            font: Theme.titleFont(22)
            Accessible.role: Accessible.Heading
        }

        Image {
            objectName: "appIcon"
            anchors.horizontalCenter: parent.horizontalCenter
            source: "icons/stackreel.svg"
            width: 82
            height: 82
            sourceSize.width: 82
            sourceSize.height: 82
            Accessible.ignored: true
        }

        Caption {
            objectName: "emptyText"
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(parent.width, 430)
            text: qsTr("Drag in almost any horizontal video. Stackreel makes a compatible preview, then exports from "
                       + "the original file.")
            font: Theme.textFont(14, Font.Medium)
            color: Theme.white(0.68)
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
        }

        FilledActionButton {
            objectName: "chooseFirstButton"
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("Choose a video")
            onClicked: state.model.chooseSource()
        }
    }
}
