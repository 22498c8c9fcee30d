import QtQuick

/// The hit area of a window edge or corner. A drag starts a resize by the window manager.
Item {
    id: edge

    required property Window window
    required property int edges
    property alias shape: hover.cursorShape

    HoverHandler {
        id: hover
    }

    DragHandler {
        target: null
        acceptedButtons: Qt.LeftButton
        dragThreshold: 1
        onActiveChanged: {
            if (active)
                edge.window.startSystemResize(edge.edges);
        }
    }
}
