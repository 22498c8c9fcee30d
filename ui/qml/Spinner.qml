pragma ComponentBehavior: Bound

import QtQuick
import Stackreel

/// An indeterminate progress indicator of rotating spokes. Does not move if the user prefers reduced motion.
Item {
    id: spinner

    property color color: "white"
    property int phase: 0
    readonly property int spokes: 10
    readonly property bool rotates: visible && !MotionPreference.reduced

    implicitWidth: 32
    implicitHeight: width

    Repeater {
        model: spinner.spokes

        Rectangle {
            id: spoke

            required property int index

            x: (spinner.width - width) / 2
            width: spinner.width * 0.09
            height: spinner.height * 0.28
            radius: width / 2
            color: spinner.color
            opacity: 1 - 0.085 * ((spinner.phase - spoke.index + spinner.spokes) % spinner.spokes)
            transform: Rotation {
                origin.x: spinner.width * 0.045
                origin.y: spinner.height / 2
                angle: 360 / spinner.spokes * spoke.index
            }
        }
    }

    Timer {
        interval: 90
        repeat: true
        running: spinner.rotates
        onTriggered: spinner.phase = (spinner.phase + 1) % spinner.spokes
    }
}
