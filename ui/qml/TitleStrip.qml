import QtQuick
import Stackreel

/// The title bar: the menus at the left, the window buttons at the right. Dragging the space between them moves the
/// window. Also defines the shortcuts of the menu items, which work independent of the focus.
Item {
    id: strip

    required property Window window
    required property WindowModel model
    required property WindowActions actions
    /// Gets the focus back when a menu or dialog closes.
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
            // Qt 6.4 treats a closed menu as open while the pointer hovers over its title, and would then open the next
            // menu without a click.
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

    // These two also work while a menu or dialog of this window is open, but not in a file dialog, which has shortcuts
    // of its own.
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
    // A focused text field and a button with visual focus handle this key themselves.
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
