import QtQuick
import Stackreel

/// Reports a drag of its parent in the coordinates of `referenceItem`, which does not move with the parent. A press
/// gives `focusTarget` the focus.
MouseArea {
    id: area

    required property Item referenceItem
    required property Item focusTarget
    property point pressPosition

    /// The pointer moved; `x` and `y` are its distance from where it was pressed.
    signal dragged(real x, real y)
    /// The drag ended, by a release or because it was canceled.
    signal ended()

    anchors.fill: parent
    preventStealing: true

    DragCursor {
        active: area.pressed
        shape: area.cursorShape
    }

    onPressed: mouse => {
        pressPosition = mapToItem(referenceItem, mouse.x, mouse.y);
        focusTarget.forceActiveFocus(Qt.MouseFocusReason);
    }
    onPositionChanged: mouse => {
        const now = mapToItem(referenceItem, mouse.x, mouse.y);
        dragged(now.x - pressPosition.x, now.y - pressPosition.y);
    }
    onReleased: ended()
    onCanceled: ended()
}
