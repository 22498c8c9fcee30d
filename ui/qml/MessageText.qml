import QtQuick
import Stackreel

/// A message, elided where it does not fit. Its full text is in the tool tip and in the accessible name.
Caption {
    id: line

    required property string message

    // An error message can contain several lines of a tool's output.
    text: message.replace(/\s*\n\s*/g, " ")
    font: Theme.textFont(14, Font.Medium)

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
