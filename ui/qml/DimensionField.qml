import QtQuick
import QtQuick.Templates as T
import Stackreel

/// A text field for an integer. When the user presses Return or the field loses the focus, it emits `committed` with
/// the typed text and then shows `value` again, which the owner may have changed. Escape discards the typed text.
T.TextField {
    id: field

    property string title
    property string value

    signal committed(string typed)

    implicitHeight: contentHeight + topPadding + bottomPadding
    implicitWidth: 100
    leftPadding: 10
    rightPadding: 10
    topPadding: 9
    bottomPadding: 9
    text: value
    placeholderText: title
    placeholderTextColor: Theme.white(0.55)
    color: "white"
    selectionColor: Theme.signalCoral
    selectedTextColor: "black"
    selectByMouse: true
    hoverEnabled: true
    font: Theme.fixedFont(14)
    renderType: Text.NativeRendering
    inputMethodHints: Qt.ImhFormattedNumbersOnly

    Accessible.role: Accessible.EditableText
    Accessible.name: title

    function showValue() {
        text = Qt.binding(() => field.value);
    }

    onEditingFinished: {
        committed(text);
        showValue();
    }
    Keys.onEscapePressed: showValue()
    onActiveFocusChanged: activeFocus ? selectAll() : deselect()

    background: Rectangle {
        color: Theme.white(0.08)
        radius: 6

        FocusRing {
            parentRadius: 6
            distance: 0
            visible: field.activeFocus
        }
    }

    Caption {
        x: field.leftPadding
        y: field.topPadding
        text: field.placeholderText
        font: field.font
        color: field.placeholderTextColor
        visible: field.length === 0 && field.preeditText.length === 0
        spoken: false
    }

    HoverHint {
        text: field.title
        shown: field.hovered && !field.activeFocus
    }
}
