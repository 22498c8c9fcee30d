import QtQuick
import Stackreel

/// The handle at the start or end of the trimmed range.
TimelineSlider {
    id: handle

    required property color accent
    required property bool active ///< hovered or being dragged

    // Applied to the sizes instead of a scale transform, because with a transform the software scene graph leaves gaps
    // in rounded corners.
    property real growth: active ? 1.1 : 1

    width: 13
    height: 46

    Behavior on growth {
        enabled: !MotionPreference.reduced

        // A spring with a response of 0.18 s and a damping fraction of 0.66. SpringAnimation works in steps of 16 ms,
        // so its values are spring = 0.016 (2π / 0.18)² and damping = 0.016 · 2 · 0.66 (2π / 0.18).
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
        // From 0.16 at normal size to 0.32 at full growth.
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
        // Not anchored: anchors round to whole points, which would be off-centre on a high-DPI screen.
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
