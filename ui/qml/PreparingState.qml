import QtQuick
import Stackreel

/// Shown in the workspace while a clip is being loaded.
Item {
    Column {
        anchors.centerIn: parent
        spacing: 16

        Spinner {
            objectName: "spinner"
            anchors.horizontalCenter: parent.horizontalCenter
            Accessible.role: Accessible.ProgressBar
            Accessible.name: preparingText.text
        }

        Caption {
            id: preparingText

            objectName: "preparingText"
            text: qsTr("Preparing preview")
            font: Theme.textFont(18, Font.Bold)
        }
    }
}
