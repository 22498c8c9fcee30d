import QtQuick
import Stackreel

/// A handle at one end of the kept range.
TimelineSlider {
    id: handle

    required property color accent
    required property bool active ///< hovered or being dragged

    width: 13
    height: 46
    scale: active ? 1.1 : 1

    Behavior on scale {
        enabled: !MotionPreference.reduced

        // A spring of response 0.18 s and damping fraction 0.66, in the terms of this animation, which counts in steps
        // of 16 ms: 0.016 (2π / 0.18)² and 0.016 · 2 · 0.66 (2π / 0.18).
        SpringAnimation {
            spring: 19.5
            damping: 0.74
            epsilon: 0.001
        }
    }

    SoftShadow {
        anchors.fill: parent
        strength: handle.active ? 0.32 : 0.16
        cornerRadius: 3
    }

    Rectangle {
        objectName: "face"
        anchors.fill: parent
        radius: 3
        color: handle.accent
    }

    Rectangle {
        objectName: "grip"
        anchors.centerIn: parent
        width: 2
        height: 17
        color: Theme.black(0.58)
    }

    FocusRing {
        parentRadius: 3
        distance: 2
        visible: handle.visualFocus
    }
}
