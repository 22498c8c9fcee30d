import QtQuick
import Stackreel

/// The handle at the start or end of the trimmed range.
TimelineSlider {
    id: handle

    required property color accent
    required property bool active ///< hovered or being dragged

    // Applied to the sizes instead of a scale transform, because with a transform the software scene graph leaves gaps
    // in rounded corners.
    readonly property real growth: spring.value

    width: 13
    height: 46

    SpringValue {
        id: spring

        target: handle.active ? 1.1 : 1
        animated: !MotionPreference.reduced
    }

    FrameAnimation {
        running: !spring.settled
        onTriggered: spring.advance(frameTime)
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
