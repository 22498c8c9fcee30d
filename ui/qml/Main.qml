import QtQuick
import Stackreel

/// The main window, with client-side decorations: a title bar above the content, and a frame. The window manager moves
/// and resizes it, so tiling and snapping work as for any other window.
Window {
    id: window

    required property WindowModel model
    required property WindowActions actions

    title: "Stackreel"
    color: Theme.graphite
    flags: Qt.Window | Qt.FramelessWindowHint | Qt.WindowMinMaxButtonsHint | Qt.WindowCloseButtonHint
    // The content has 1180 × 780 points at first, and at least 980 × 680.
    width: 1180
    height: 780 + titleBar.height
    minimumWidth: 980
    minimumHeight: 680 + titleBar.height

    onClosing: actions.quit()

    ContentView {
        id: content

        objectName: "contentView"
        anchors.fill: parent
        anchors.topMargin: titleBar.height
        model: window.model
    }

    WindowMoveArea {
        objectName: "headerMoveArea"
        parent: content.dragArea
        anchors.fill: parent
        window: window
    }

    TitleBar {
        id: titleBar

        objectName: "titleBar"
        width: parent.width
        window: window
        model: window.model
        actions: window.actions
        view: content
    }

    WindowFrame {
        anchors.fill: parent
        window: window
    }
}
