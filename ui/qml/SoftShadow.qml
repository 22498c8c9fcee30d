pragma ComponentBehavior: Bound

import QtQuick

/// A soft shadow for a rounded rectangle of the same size. The shadow extends 7 points beyond the rectangle; `strength`
/// is its opacity at the centre. It consists of plain rectangles, because the software scene graph has no shader
/// effects.
Item {
    id: shadow

    property real strength: 0.32
    property real cornerRadius: 3
    readonly property int spread: 7

    Repeater {
        model: shadow.spread

        Rectangle {
            id: layer

            required property int index

            anchors.fill: parent
            anchors.margins: -layer.index - 1
            radius: shadow.cornerRadius + layer.index + 1
            color: "black"
            opacity: shadow.strength / shadow.spread
        }
    }
}
