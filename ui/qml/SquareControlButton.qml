import QtQuick
import Stackreel

/// A small icon button over the video.
ActionButton {
    id: button

    property url symbol

    padding: 9
    cornerRadius: 6

    contentItem: Image {
        source: button.symbol
        width: 20
        height: 20
        sourceSize.width: 20
        sourceSize.height: 20
    }
    background: Rectangle {
        color: Theme.black(button.down ? 0.82 : 0.64)
        radius: button.cornerRadius
    }
}
