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

        property real travel: -width
        readonly property bool travels: bar.visible && !MotionPreference.reduced

        objectName: "segment"
        // With reduced motion, the segment fades in and out in the middle. A filled bar would mean "done".
        x: MotionPreference.reduced ? (bar.width - width) / 2 : travel
        width: 72
        height: bar.height
        radius: height / 2
        color: bar.tint

        NumberAnimation on travel {
            from: -segment.width
            to: bar.width
            duration: 1400
            easing.type: Easing.InOutSine
            loops: Animation.Infinite
            running: segment.travels
        }

        SequentialAnimation on opacity {
            loops: Animation.Infinite
            running: bar.visible && MotionPreference.reduced

            NumberAnimation { from: 1; to: 0.4; duration: 1200; easing.type: Easing.InOutSine }
            NumberAnimation { from: 0.4; to: 1; duration: 1200; easing.type: Easing.InOutSine }
        }
    }
}
