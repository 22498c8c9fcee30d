import QtQuick
import Stackreel

/// The status in a single elided line. The full text is in the tool tip and in the accessible name, whose changes are
/// reported to assistive technology.
Caption {
    id: line

    property string message
    property bool failed: false

    objectName: "status"
    // An error message can contain several lines of a tool's output.
    text: message.replace(/\s*\n\s*/g, " ")
    font: Theme.textFont(14, Font.Medium)
    color: failed ? Theme.signalCoral : Theme.white(0.66)
    // The start and the end of a file name or an error message are the most useful parts.
    elide: Text.ElideMiddle
    maximumLineCount: 1

    Accessible.role: Accessible.StatusBar
    Accessible.name: message

    HoverHandler {
        id: pointer
    }

    HoverHint {
        text: line.message
        shown: pointer.hovered && (line.truncated || line.text !== line.message)
        x: 0
    }
}
