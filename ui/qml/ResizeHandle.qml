import QtQuick

/// The corner by which a crop is resized.
Rectangle {
    id: handle

    property color mark: "white"

    width: 20
    height: 20
    color: "black"

    Rectangle {
        objectName: "mark"
        anchors.centerIn: parent
        width: 12
        height: 12
        color: handle.mark
    }
}
