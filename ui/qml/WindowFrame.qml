import QtQuick

/// The window's frame: a thin line that sets the window off from a dark desktop, and the hit areas for resizing. Hidden
/// while the window is maximized.
Item {
    id: frame

    required property Window window

    readonly property int thickness: 5
    readonly property int corner: 14

    visible: window.visibility === Window.Windowed

    Rectangle {
        anchors.fill: parent
        color: "transparent"
        border.color: Qt.rgba(1, 1, 1, 0.16)
    }

    FrameEdge {
        window: frame.window
        edges: Qt.TopEdge
        shape: Qt.SizeVerCursor
        x: frame.corner
        width: frame.width - 2 * frame.corner
        height: frame.thickness
    }
    FrameEdge {
        window: frame.window
        edges: Qt.BottomEdge
        shape: Qt.SizeVerCursor
        x: frame.corner
        y: frame.height - height
        width: frame.width - 2 * frame.corner
        height: frame.thickness
    }
    FrameEdge {
        window: frame.window
        edges: Qt.LeftEdge
        shape: Qt.SizeHorCursor
        y: frame.corner
        width: frame.thickness
        height: frame.height - 2 * frame.corner
    }
    FrameEdge {
        window: frame.window
        edges: Qt.RightEdge
        shape: Qt.SizeHorCursor
        x: frame.width - width
        y: frame.corner
        width: frame.thickness
        height: frame.height - 2 * frame.corner
    }
    FrameEdge {
        window: frame.window
        edges: Qt.TopEdge | Qt.LeftEdge
        shape: Qt.SizeFDiagCursor
        width: frame.thickness
        height: frame.corner
    }
    FrameEdge {
        window: frame.window
        edges: Qt.TopEdge | Qt.RightEdge
        shape: Qt.SizeBDiagCursor
        x: frame.width - width
        width: frame.thickness
        height: frame.corner
    }
    FrameEdge {
        objectName: "bottomLeftCorner"
        window: frame.window
        edges: Qt.BottomEdge | Qt.LeftEdge
        shape: Qt.SizeBDiagCursor
        y: frame.height - height
        width: frame.corner
        height: frame.corner
    }
    FrameEdge {
        objectName: "bottomRightCorner"
        window: frame.window
        edges: Qt.BottomEdge | Qt.RightEdge
        shape: Qt.SizeFDiagCursor
        x: frame.width - width
        y: frame.height - height
        width: frame.corner
        height: frame.corner
    }
}
