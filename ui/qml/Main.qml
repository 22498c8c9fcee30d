import QtQuick
import Stackreel

/// The main window: the title strip over the content, in a frame of our own.
Window {
    id: window

    required property WindowModel model
    required property WindowActions actions

    title: "Stackreel"
    color: "#0e1114"
    flags: Qt.Window | Qt.FramelessWindowHint
    minimumWidth: 980
    minimumHeight: 680 + strip.height

    Item {
        id: strip

        width: parent.width
        height: 30
    }

    ContentView {
        anchors.fill: parent
        anchors.topMargin: strip.height
        objectName: "contentView"
        model: window.model
    }
}
