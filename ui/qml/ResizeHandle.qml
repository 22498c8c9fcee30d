import QtQuick

/// The handle in the corner of a crop that resizes it.
Rectangle {
    id: handle

    property color mark: "white"

    width: 20
    height: 20
    color: "black"
    // Slightly translucent on purpose. When only the video below changes, the software scene graph does not repaint the
    // border pixels of an opaque item at a fractional position, so the handle would lose its edge.
    opacity: 0.999

    Rectangle {
        objectName: "mark"
        anchors.centerIn: parent
        width: 12
        height: 12
        color: handle.mark
    }
}
