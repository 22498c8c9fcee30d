import QtQuick
import QtQuick.Templates as T
import Stackreel

/// Moves the keyboard focus when a change of phase hides or disables the focused control: to `editingFallback` while a
/// clip can be edited, otherwise to `otherFallback`. Without it no item would have the focus, and screen reader users
/// would lose their place. Applies only to visual focus.
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

    // Deferred until all bindings have shown and hidden the controls of the new phase.
    readonly property Timer deferredUpdate: Timer {
        interval: 0
        onTriggered: fallback.update()
    }

    function update() {
        // When the window is activated, Qt may restore the focus to a hidden item.
        if (focused && focused !== content.Window.contentItem && canTakeFocus(focused))
            recordFocus();
        else if (lastFocused && hadVisualFocus && phase !== WindowModel.Preparing && !canTakeFocus(lastFocused))
            (model.editable ? editingFallback : otherFallback).forceActiveFocus(Qt.ShortcutFocusReason);
    }

    function canTakeFocus(item: Item): bool {
        return item.visible && item.enabled;
    }

    /// Items outside the content are ignored: menus and dialogs restore the focus themselves.
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
