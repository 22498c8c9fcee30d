import QtQuick
import Stackreel

/// The main window: the title strip over the content, in a frame of our own. The desktop moves and resizes it, so that
/// it tiles and snaps as any other.
Window {
    id: window

    required property WindowModel model
    required property WindowActions actions

    title: "Stackreel"
    color: Theme.graphite
    flags: Qt.Window | Qt.FramelessWindowHint | Qt.WindowMinMaxButtonsHint | Qt.WindowCloseButtonHint
    // The content needs at least 980 × 680 points.
    minimumWidth: 980
    minimumHeight: 680 + strip.height

    onClosing: actions.quit()

    ContentView {
        id: content

        objectName: "contentView"
        anchors.fill: parent
        anchors.topMargin: strip.height
        model: window.model
    }

    WindowMoveArea {
        objectName: "headerMoveArea"
        parent: content.dragArea
        anchors.fill: parent
        window: window
    }

    TitleStrip {
        id: strip

        objectName: "titleStrip"
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
