import QtQuick
import QtQuick.Templates as T
import Stackreel

/// Moves the keyboard focus when the focused control is hidden, disabled or destroyed: to `editingFallback` while a
/// clip can be edited, otherwise to `otherFallback`. Without this, no item would have the focus, and screen reader
/// users would not know where they are. Does nothing if the focus was not visible.
QtObject {
    id: fallback

    required property WindowModel model
    required property Item content
    required property Item editingFallback
    required property Item otherFallback

    readonly property Item focused: content.Window.activeFocusItem
    readonly property int phase: model.phase
    property Item lastFocused ///< the item in the content that has the focus, or had it last
    property bool hadVisualFocus: false

    onFocusedChanged: deferredUpdate.start()
    onPhaseChanged: deferredUpdate.start()

    // Deferred until all bindings are evaluated, which show and hide the controls of the new phase.
    readonly property Timer deferredUpdate: Timer {
        interval: 0
        onTriggered: fallback.update()
    }

    function update() {
        // When the window is activated, Qt may give the focus to a hidden item, so the item is checked here.
        if (focused !== content.Window.contentItem && canTakeFocus(focused))
            recordFocus();
        else if (hadVisualFocus && phase !== WindowModel.Preparing && !canTakeFocus(lastFocused))
            (model.editable ? editingFallback : otherFallback).forceActiveFocus(Qt.ShortcutFocusReason);
    }

    /// False for null, too: `lastFocused` becomes null when its item is destroyed. An item that is about to be
    /// destroyed has no window.
    function canTakeFocus(item: Item): bool {
        return item !== null && item.Window.window !== null && item.visible && item.enabled;
    }

    /// Records the focused item if it is inside the content. Menus and dialogs restore the focus themselves.
    function recordFocus() {
        let above = focused;
        while (above && above !== content)
            above = above.parent;
        if (!above || focused === lastFocused)
            return;
        lastFocused = focused;
        hadVisualFocus = (focused as FocusItem)?.visualFocus || (focused as T.Control)?.visualFocus || false;
    }
}
