import QtQuick
import QtQuick.Templates as T
import Stackreel

/// Hands the focus of the keyboard on when the control that showed it goes away with a phase: to `first` where there
/// is a clip to edit, else to `last`. Without it the focus would be nowhere, and whoever cannot see has lost the place.
QtObject {
    id: succession

    required property WindowModel model
    required property Item content
    required property Item first
    required property Item last

    readonly property Item focused: content.Window.activeFocusItem
    readonly property int phase: model.phase
    property Item holder ///< what in the content has the focus, or had it last
    property bool focusWasShown: false

    onFocusedChanged: later.start()
    onPhaseChanged: later.start()

    // Deferred until all bindings have shown and hidden the controls of the new phase.
    readonly property Timer later: Timer {
        interval: 0
        onTriggered: succession.look()
    }

    function look() {
        // When the window is activated, Qt may restore the focus to a hidden item.
        if (focused && focused !== content.Window.contentItem && canHold(focused))
            remember();
        else if (holder && focusWasShown && phase !== WindowModel.Preparing && !canHold(holder))
            (model.editable ? first : last).forceActiveFocus(Qt.ShortcutFocusReason);
    }

    function canHold(item: Item): bool {
        return item.visible && item.enabled;
    }

    /// Items outside the content are ignored: menus and dialogs restore the focus themselves.
    function remember() {
        let above = focused;
        while (above && above !== content)
            above = above.parent;
        if (!above || focused === holder)
            return;
        holder = focused;
        focusWasShown = (focused as FocusItem)?.visualFocus || (focused as T.Control)?.visualFocus || false;
    }
}
