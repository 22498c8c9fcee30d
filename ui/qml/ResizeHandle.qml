import QtQuick

/// The handle in the corner of a crop that resizes it.
Rectangle {
    id: handle

    property color mark: "white"

    width: 20
    height: 20
    color: "black"
    // The handle is slightly translucent on purpose. The software scene graph does not repaint the border pixels of an
    // opaque item at a fractional position when only the video below changes, so the handle would lose its edge.
    opacity: 0.999

    Rectangle {
        objectName: "mark"
        anchors.centerIn: parent
        width: 12
        height: 12
        color: handle.mark
    }
}
