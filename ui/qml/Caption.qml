import QtQuick
import Stackreel

/// A line of text to be read: never markup, and known to assistive technology unless it is the label of a control
/// that says the same (`spoken` false).
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
