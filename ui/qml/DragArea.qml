import QtQuick

/// Follows a drag of its parent in the coordinates of `space`, which stays where it is when the parent moves. A press
/// gives `focusTarget` the focus.
MouseArea {
    id: area

    required property Item space
    required property Item focusTarget
    property point start

    /// The pointer moved; `x` and `y` are its distance from where it was pressed.
    signal dragged(real x, real y)
    /// The drag ended, by a release or because it was canceled.
    signal ended()

    anchors.fill: parent
    preventStealing: true

    onPressed: mouse => {
        start = mapToItem(space, mouse.x, mouse.y);
        focusTarget.forceActiveFocus(Qt.MouseFocusReason);
    }
    onPositionChanged: mouse => {
        const now = mapToItem(space, mouse.x, mouse.y);
        dragged(now.x - start.x, now.y - start.y);
    }
    onReleased: ended()
    onCanceled: ended()
}
