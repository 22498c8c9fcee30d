import QtQuick
import Stackreel

/// The status in one line, however long it is; the whole of it as a hint and to assistive technology, which hears of
/// each change as a change of this line's name.
Caption {
    id: line

    property string message
    property bool failed: false

    objectName: "status"
    // A failure may come with the last lines of a tool.
    text: message.replace(/\s*\n\s*/g, " ")
    font: Theme.textFont(14, Font.Medium)
    color: failed ? Theme.signalCoral : Theme.white(0.66)
    // Both ends matter, of a file's name and of a tool's last lines.
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
