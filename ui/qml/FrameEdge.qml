import QtQuick

/// An edge or corner of the window that it is resized by. The desktop does the resizing.
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
