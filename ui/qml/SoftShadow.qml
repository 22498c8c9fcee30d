pragma ComponentBehavior: Bound

import QtQuick

/// A soft shadow for a rounded rectangle of the same size. The shadow extends 7 points beyond the rectangle; `strength`
/// is its opacity at the edge of the rectangle and below it. It consists of plain rectangles, because the software scene
/// graph has no shader effects.
Item {
    id: shadow

    property real strength: 0.32
    property real cornerRadius: 3
    readonly property int spread: 7

    /// The opacity at a distance from the rectangle, in points. It falls smoothly from `strength` to 0.
    function opacityAt(distance: real): real {
        const part = Math.min(distance / spread, 1);
        return strength * (1 - part * part * (3 - 2 * part));
    }

    Repeater {
        model: shadow.spread

        Rectangle {
            id: layer

            required property int index

            anchors.fill: parent
            anchors.margins: -layer.index - 1
            radius: shadow.cornerRadius + layer.index + 1
            color: "black"
            // The opacities of all layers below a point combine to `opacityAt` its distance.
            opacity: 1 - (1 - shadow.opacityAt(layer.index)) / (1 - shadow.opacityAt(layer.index + 1))
        }
    }
}
