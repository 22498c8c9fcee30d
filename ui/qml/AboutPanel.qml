import QtQuick
import QtQuick.Templates as T
import Stackreel

/// The dialog with the program's name and version.
T.Dialog {
    id: panel

    required property string version

    objectName: "aboutPanel"
    // Only assistive technology reads the title; the dialog does not show it.
    title: qsTr("About Stackreel")
    parent: T.Overlay.overlay
    anchors.centerIn: parent
    modal: true
    focus: true
    padding: 28
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding

    contentItem: Column {
        spacing: 10

        Image {
            anchors.horizontalCenter: parent.horizontalCenter
            source: "icons/stackreel.svg"
            sourceSize.width: 64
            sourceSize.height: 64
        }
        Caption {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "Stackreel"
            font: Theme.titleFont(22)
        }
        Caption {
            objectName: "versionText"
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("Version %1").arg(panel.version)
            color: Theme.white(0.66)
        }
        Caption {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("Two views of one landscape clip, stacked.")
        }
        OutlineActionButton {
            objectName: "closeAbout"
            focus: true
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("Close")
            onClicked: panel.close()
        }
    }
    background: Rectangle {
        color: Theme.panel
        border.color: Theme.white(0.16)
        radius: 10
    }

    T.Overlay.modal: Rectangle {
        color: Theme.black(0.5)
    }
}
