import QtQuick
import Stackreel

/// A line of plain text. Set `spoken` to false for the label of a control that has the same accessible name, so that
/// screen readers do not read it twice.
Text {
    property bool spoken: true

    color: "white"
    font: Theme.textFont(13, Font.Medium)
    renderType: Text.NativeRendering
    textFormat: Text.PlainText

    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: !spoken
}
