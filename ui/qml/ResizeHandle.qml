import QtQuick

/// The corner by which a crop is resized.
Rectangle {
    id: handle

    property color mark: "white"

    width: 20
    height: 20
    color: "black"
    // Hardly less than opaque: of what is opaque and lies between two pixels, the software scene graph leaves out the
    // pixels along the edge whenever it paints anew only what is beneath, as with every frame of a playing video.
    opacity: 0.999

    Rectangle {
        objectName: "mark"
        anchors.centerIn: parent
        width: 12
        height: 12
        color: handle.mark
    }
}
