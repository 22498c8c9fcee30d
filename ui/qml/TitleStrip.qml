import QtQuick
import Stackreel

/// The strip at the window's very top: the menus at the left, the window's buttons at the right, and in between what
/// the window is moved by. Also holds the keys of the menus, which work wherever the focus is.
Item {
    id: strip

    required property Window window
    required property WindowModel model
    required property WindowActions actions
    /// What gets the focus back from the menus.
    required property ContentView view

    readonly property bool maximised: window.visibility === Window.Maximized

    readonly property bool popupShown: applicationMenu.visible || fileMenu.visible || playbackMenu.visible || about.visible

    implicitHeight: 30

    onPopupShownChanged: if (!popupShown) focusKeeper.giveBack()

    FocusKeeper {
        id: focusKeeper

        content: strip.view
    }

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
            id: applicationMenu

            objectName: "applicationMenu"
            title: "Stackreel"
            onAboutToShow: focusKeeper.remember()
            // Qt 6.4 would take a menu with the pointer on its title for open, whatever closed it, and open the next one
            // without a click.
            onAboutToHide: focusKeeper.takePointerOff(parent)

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
            id: fileMenu

            objectName: "fileMenu"
            title: qsTr("File")
            onAboutToShow: focusKeeper.remember()
            onAboutToHide: focusKeeper.takePointerOff(parent)

            StripMenuItem {
                objectName: "chooseVideoItem"
                text: qsTr("Choose Video…")
                keys: "Ctrl+O"
                onTriggered: strip.model.chooseSource()
            }
        }

        StripMenu {
            id: playbackMenu

            objectName: "playbackMenu"
            title: qsTr("Playback")
            onAboutToShow: focusKeeper.remember()
            onAboutToHide: focusKeeper.takePointerOff(parent)

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

    // These two also over a menu or a box of the window; not in a panel, which has keys of its own.
    Shortcut {
        sequence: "Ctrl+O"
        context: Qt.ApplicationShortcut
        autoRepeat: false
        enabled: strip.window.active
        onActivated: strip.model.chooseSource()
    }
    Shortcut {
        sequence: "Ctrl+Q"
        context: Qt.ApplicationShortcut
        enabled: strip.window.active
        onActivated: strip.actions.quit()
    }
    // A text field, and a button that shows the focus, take this key before it gets here.
    Shortcut {
        sequence: "Space"
        autoRepeat: false
        enabled: strip.model.editable
        onActivated: {
            strip.model.togglePreviewPlayback();
            strip.view.announce(strip.model.previewPlaying ? qsTr("Preview plays") : qsTr("Preview paused"));
        }
    }
    Shortcut {
        sequence: "F10"
        onActivated: {
            focusKeeper.remember();
            menuBar.openFirst();
        }
    }

    AboutPanel {
        id: about

        version: strip.actions.version
        onAboutToShow: focusKeeper.remember()
    }
}
