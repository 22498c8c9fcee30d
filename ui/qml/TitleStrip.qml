import QtQuick
import Stackreel

/// The strip at the window's very top: the menus at the left, the window's buttons at the right, and in between what
/// the window is moved by. Also holds the keys of the menus, which work wherever the focus is.
Item {
    id: strip

    required property Window window
    required property WindowModel model
    required property WindowActions actions

    readonly property bool maximised: window.visibility === Window.Maximized

    implicitHeight: 30

    WindowMoveArea {
        objectName: "stripMoveArea"
        anchors.fill: parent
        window: strip.window
    }

    StripMenuBar {
        id: menuBar

        objectName: "menuBar"
        x: 6
        height: parent.height

        StripMenu {
            objectName: "applicationMenu"
            title: "Stackreel"

            StripMenuItem {
                objectName: "aboutItem"
                text: qsTr("About Stackreel")
                onTriggered: about.open()
            }
            StripMenuItem {
                objectName: "updatesItem"
                text: qsTr("Check for Updates…")
                onTriggered: strip.actions.checkForUpdates()
            }
            StripSeparator {}
            StripMenuItem {
                objectName: "quitItem"
                text: qsTr("Quit")
                keys: "Ctrl+Q"
                onTriggered: strip.actions.quit()
            }
        }

        StripMenu {
            objectName: "fileMenu"
            title: qsTr("File")

            StripMenuItem {
                objectName: "chooseVideoItem"
                text: qsTr("Choose Video…")
                keys: "Ctrl+O"
                onTriggered: strip.model.chooseSource()
            }
        }

        StripMenu {
            objectName: "playbackMenu"
            title: qsTr("Playback")

            StripMenuItem {
                objectName: "togglePreviewItem"
                text: strip.model.previewPlaying ? qsTr("Pause Preview") : qsTr("Play Preview")
                keys: qsTr("Space")
                enabled: strip.model.editable
                onTriggered: strip.model.togglePreviewPlayback()
            }
        }
    }

    Row {
        anchors.right: parent.right
        height: parent.height

        WindowButton {
            objectName: "minimizeButton"
            height: parent.height
            text: qsTr("Minimize")
            icon.source: "icons/window-minimise.svg"
            onClicked: strip.window.showMinimized()
        }
        WindowButton {
            objectName: "maximizeButton"
            height: parent.height
            text: strip.maximised ? qsTr("Restore") : qsTr("Maximize")
            icon.source: strip.maximised ? "icons/window-restore.svg" : "icons/window-maximise.svg"
            onClicked: strip.maximised ? strip.window.showNormal() : strip.window.showMaximized()
        }
        WindowButton {
            objectName: "closeButton"
            height: parent.height
            text: qsTr("Close")
            icon.source: "icons/window-close.svg"
            hoverColor: "#c42b1c"
            onClicked: strip.window.close()
        }
    }

    Shortcut {
        sequence: "Ctrl+O"
        onActivated: strip.model.chooseSource()
    }
    Shortcut {
        sequence: "Ctrl+Q"
        onActivated: strip.actions.quit()
    }
    // A text field, and a button that shows the focus, take this key before it gets here.
    Shortcut {
        sequence: "Space"
        autoRepeat: false
        enabled: strip.model.editable
        onActivated: strip.model.togglePreviewPlayback()
    }
    Shortcut {
        sequence: "F10"
        onActivated: menuBar.openFirst()
    }

    AboutPanel {
        id: about

        version: strip.actions.version
    }
}
