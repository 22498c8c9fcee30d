import QtQuick
import Stackreel

/// A handle at one end of the kept range.
TimelineSlider {
    id: handle

    required property color accent
    required property bool active ///< hovered or being dragged

    // Grows by its measures and not by a transform, under which the software scene graph leaves gaps in corners.
    property real growth: active ? 1.1 : 1

    width: 13
    height: 46

    Behavior on growth {
        enabled: !MotionPreference.reduced

        // A spring of response 0.18 s and damping fraction 0.66, in the terms of this animation, which counts in steps
        // of 16 ms: 0.016 (2π / 0.18)² and 0.016 · 2 · 0.66 (2π / 0.18).
        SpringAnimation {
            objectName: "spring"
            spring: 19.5
            damping: 0.74
            epsilon: 0.001
        }
    }

    SoftShadow {
        objectName: "shadow"
        anchors.fill: face
        // As far on its way from 0.16 to 0.32 as the handle is on its own.
        strength: 0.16 + 1.6 * (handle.growth - 1)
        cornerRadius: face.radius
    }

    Rectangle {
        id: face

        objectName: "face"
        x: (parent.width - width) / 2
        y: (parent.height - height) / 2
        width: 13 * handle.growth
        height: 46 * handle.growth
        radius: 3 * handle.growth
        color: handle.accent
    }

    Rectangle {
        objectName: "grip"
        // Anchors would take it to a whole point, which on a dense screen is beside the middle.
        x: (parent.width - width) / 2
        y: (parent.height - height) / 2
        width: 2 * handle.growth
        height: 17 * handle.growth
        color: Theme.black(0.58)
    }

    FocusRing {
        parentRadius: 3
        distance: 2
        visible: handle.visualFocus
    }
}
