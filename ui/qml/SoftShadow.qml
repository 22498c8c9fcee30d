pragma ComponentBehavior: Bound

import QtQuick

/// A soft shadow under a rounded rectangle of its size, spreading 7 points, the darkest (`strength`) beneath it.
/// Made of plain rectangles, as the software scene graph knows no effects.
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
