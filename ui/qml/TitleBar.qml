import QtQuick
import Stackreel

/// The title bar: the menus at the left, the window buttons at the right. Dragging the space between them moves the
/// window. Also defines the shortcuts of the menu items, which work independent of the focus.
Item {
    id: titleBar

    required property Window window
    required property WindowModel model
    required property WindowActions actions
    /// The item inside it that had the focus gets it back when a menu or dialog closes.
    required property ContentView view

    readonly property bool maximised: window.visibility === Window.Maximized

    readonly property bool popupShown: applicationMenu.visible || fileMenu.visible || playbackMenu.visible || about.visible

    implicitHeight: 30

    onPopupShownChanged: if (!popupShown) focusRestorer.restore()

    FocusRestorer {
        id: focusRestorer

        content: titleBar.view
    }

    WindowMoveArea {
        objectName: "titleBarMoveArea"
        anchors.fill: parent
        window: titleBar.window
    }

    WindowMenuBar {
        id: menuBar

        objectName: "menuBar"
        x: 6
        height: parent.height

        WindowMenu {
            id: applicationMenu

            objectName: "applicationMenu"
            title: "Stackreel"
            onAboutToShow: focusRestorer.save()
            // Qt 6.4 treats a closed menu as open while the pointer hovers over its title, and would open the next menu
            // that the pointer reaches without a click.
            onAboutToHide: focusRestorer.clearHover(parent)

            WindowMenuItem {
                objectName: "aboutItem"
                text: qsTr("About Stackreel")
                onTriggered: about.open()
            }
            WindowMenuItem {
                objectName: "updatesItem"
                text: qsTr("Check for Updates…")
                onTriggered: titleBar.actions.checkForUpdates()
            }
            WindowMenuSeparator {}
            WindowMenuItem {
                objectName: "quitItem"
                text: qsTr("Quit")
                keys: "Ctrl+Q"
                onTriggered: titleBar.actions.quit()
            }
        }

        WindowMenu {
            id: fileMenu

            objectName: "fileMenu"
            title: qsTr("File")
            onAboutToShow: focusRestorer.save()
            onAboutToHide: focusRestorer.clearHover(parent)

            WindowMenuItem {
                objectName: "chooseVideoItem"
                text: qsTr("Choose Video…")
                keys: "Ctrl+O"
                onTriggered: titleBar.model.chooseSource()
            }
        }

        WindowMenu {
            id: playbackMenu

            objectName: "playbackMenu"
            title: qsTr("Playback")
            onAboutToShow: focusRestorer.save()
            onAboutToHide: focusRestorer.clearHover(parent)

            WindowMenuItem {
                objectName: "togglePreviewItem"
                text: titleBar.model.previewPlaying ? qsTr("Pause Preview") : qsTr("Play Preview")
                keys: qsTr("Space")
                enabled: titleBar.model.editable
                onTriggered: titleBar.model.togglePreviewPlayback()
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
            onClicked: titleBar.window.showMinimized()
        }
        WindowButton {
            objectName: "maximizeButton"
            height: parent.height
            text: titleBar.maximised ? qsTr("Restore") : qsTr("Maximize")
            icon.source: titleBar.maximised ? "icons/window-restore.svg" : "icons/window-maximise.svg"
            onClicked: titleBar.maximised ? titleBar.window.showNormal() : titleBar.window.showMaximized()
        }
        WindowButton {
            objectName: "closeButton"
            height: parent.height
            text: qsTr("Close")
            icon.source: "icons/window-close.svg"
            hoverColor: "#c42b1c"
            onClicked: titleBar.window.close()
        }
    }

    // These two also work while a menu or a message of the program has the focus, but not in a file dialog: they would
    // close it and lose what was typed there.
    Shortcut {
        sequence: "Ctrl+O"
        context: Qt.ApplicationShortcut
        autoRepeat: false
        enabled: !titleBar.actions.panelFocused
        onActivated: titleBar.model.chooseSource()
    }
    Shortcut {
        sequence: "Ctrl+Q"
        context: Qt.ApplicationShortcut
        enabled: !titleBar.actions.panelFocused
        onActivated: titleBar.actions.quit()
    }
    // A focused text field and a button with visual focus handle this key themselves.
    Shortcut {
        sequence: "Space"
        autoRepeat: false
        enabled: titleBar.model.editable
        onActivated: {
            titleBar.model.togglePreviewPlayback();
            titleBar.view.announce(titleBar.model.previewPlaying ? qsTr("Preview plays") : qsTr("Preview paused"));
        }
    }
    Shortcut {
        sequence: "F10"
        onActivated: {
            focusRestorer.save();
            menuBar.openFirst();
        }
    }

    AboutPanel {
        id: about

        version: titleBar.actions.version
        onAboutToShow: focusRestorer.save()
    }
}
