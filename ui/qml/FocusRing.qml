import QtQuick

/// A frame around the parent item that shows the keyboard focus.
Rectangle {
    property real parentRadius: 7
    property real distance: 3

    objectName: "focusRing"
    anchors.fill: parent
    anchors.margins: -distance
    z: 1
    color: "transparent"
    border.color: "white"
    border.width: 2
    radius: parentRadius + distance
}
