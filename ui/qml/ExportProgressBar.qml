import QtQuick
import Stackreel

/// An indeterminate linear progress bar.
Rectangle {
    id: bar

    property color tint: Theme.signalCoral

    implicitHeight: 3
    radius: height / 2
    color: Theme.white(0.12)
    clip: true

    Accessible.role: Accessible.ProgressBar
    Accessible.name: qsTr("Export in progress")

    Rectangle {
        id: segment

        objectName: "segment"
        width: MotionPreference.reduced ? bar.width : 72
        height: bar.height
        radius: height / 2
        color: bar.tint
    }

    NumberAnimation {
        target: segment
        property: "x"
        from: -72
        to: bar.width
        duration: 1400
        easing.type: Easing.InOutSine
        loops: Animation.Infinite
        running: bar.visible && !MotionPreference.reduced
        onStopped: segment.x = 0
    }
}
