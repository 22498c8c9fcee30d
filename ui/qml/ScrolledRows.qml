import QtQuick
import Stackreel

/// Rows below each other. If they are higher than `maximumHeight`, they scroll: by the wheel, and by the arrow keys
/// while the item has the focus. Rows are `rowWidth` wide, so that the ring of a focused button is not clipped.
FocusItem {
    id: area

    default property alias rows: column.data
    required property real maximumHeight
    readonly property real rowWidth: width - 2 * column.padding
    readonly property bool scrolls: column.implicitHeight > maximumHeight

    implicitHeight: Math.min(column.implicitHeight, maximumHeight)
    activeFocusOnTab: scrolls

    Keys.onUpPressed: scrollTo(flickable.contentY - 40)
    Keys.onDownPressed: scrollTo(flickable.contentY + 40)

    /// Scrolls until the row is visible.
    function reveal(row: Item) {
        const last = row.y - column.padding;
        const first = row.y + row.height + column.padding - height;
        scrollTo(Math.max(first, Math.min(flickable.contentY, last)));
    }

    /// Scrolls to a distance from the first row.
    function scrollTo(y: real) {
        flickable.contentY = Math.max(0, Math.min(y, column.implicitHeight - height));
    }

    Flickable {
        id: flickable

        anchors.fill: parent
        contentHeight: column.implicitHeight
        boundsBehavior: Flickable.StopAtBounds
        interactive: area.scrolls
        clip: true

        Column {
            id: column

            width: area.width
            padding: 5
            spacing: 6
        }
    }

    // Shows which part of the rows is visible.
    Rectangle {
        x: parent.width - width
        y: flickable.visibleArea.yPosition * parent.height
        width: 2
        height: flickable.visibleArea.heightRatio * parent.height
        radius: 1
        color: Theme.white(0.42)
        visible: area.scrolls
    }

    FocusRing {
        distance: 0
        visible: area.visualFocus
    }
}
