import QtQuick
import Stackreel

/// The status in a single line. Changes of its accessible name are reported to assistive technology.
MessageText {
    property bool failed: false

    objectName: "status"
    color: failed ? Theme.signalCoral : Theme.white(0.66)
    // The start and the end of a file name or an error message are the most useful parts.
    elide: Text.ElideMiddle
    maximumLineCount: 1

    Accessible.role: Accessible.StatusBar
}
