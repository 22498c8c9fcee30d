import QtQuick
import QtQuick.Layouts
import Stackreel

/// Shows the clip as a row of thumbnails with the playhead, and the trimmed range between two handles.
Item {
    id: timeline

    required property WindowModel model
    required property color accent

    implicitHeight: 84

    TimelineEditor {
        id: editor

        model: timeline.model
        width: strip.width
    }

    ColumnLayout {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 10

        RowLayout {
            spacing: 14

            Caption {
                objectName: "trimTitle"
                Layout.fillWidth: true
                text: qsTr("Trim")
                font: Theme.textFont(15, Font.Black)
                Accessible.role: Accessible.Heading
            }

            Caption {
                objectName: "rangeText"
                text: timeline.model.rangeText
                font: Theme.textFont(12, Font.DemiBold)
                color: Theme.white(0.62)
            }

            Caption {
                objectName: "selectedText"
                text: timeline.model.selectedText
                font: Theme.textFont(12, Font.DemiBold)
                color: Theme.white(0.72)
            }
        }

        Item {
            id: strip

            objectName: "strip"
            Layout.fillWidth: true
            implicitHeight: 42

            TimelineSlider {
                id: position

                objectName: "videoPosition"
                x: editor.inset
                width: editor.trackWidth
                height: 42
                name: qsTr("Video position")
                seconds: timeline.model.currentTime
                followsPlayer: true
                dragged: editor.draggingPlayhead
                valueText: timeline.model.timeText(seconds)
                maximumValue: timeline.model.duration
                step: editor.step
                onStepped: direction => editor.adjustPlayhead(direction)
                onTimeRequested: time => editor.movePlayhead(time)

                ThumbnailStrip {
                    objectName: "thumbnails"
                    anchors.fill: parent
                    model: timeline.model
                }

                FocusRing {
                    parentRadius: 5
                    visible: position.visualFocus
                }
            }

            Rectangle {
                objectName: "cutBefore"
                x: editor.inset
                width: Math.max(editor.startX - editor.inset, 0)
                height: 42
                color: Theme.black(0.7)
            }

            Rectangle {
                objectName: "cutAfter"
                x: editor.endX
                width: Math.max(editor.inset + editor.trackWidth - editor.endX, 0)
                height: 42
                color: Theme.black(0.7)
            }

            Rectangle {
                objectName: "rangeBar"
                x: editor.startX
                y: 38
                width: Math.max(editor.endX - editor.startX, 0)
                height: 4
                color: timeline.accent
            }

            Rectangle {
                objectName: "playhead"
                x: editor.playheadX - width / 2
                y: -2
                width: 2
                height: 46
                color: "white"
            }

            TrimHandle {
                id: startHandle

                objectName: "trimStartHandle"
                x: editor.startX - width / 2
                y: -2
                accent: timeline.accent
                active: editor.startActive
                name: qsTr("Trim start")
                seconds: timeline.model.trimStart
                valueText: timeline.model.timeText(seconds)
                maximumValue: timeline.model.duration
                step: editor.step
                onStepped: direction => editor.adjustTrimStart(direction)
                onTimeRequested: time => editor.moveTrimStart(time)
            }

            TrimHandle {
                id: endHandle

                objectName: "trimEndHandle"
                x: editor.endX - width / 2
                y: -2
                accent: timeline.accent
                active: editor.endActive
                name: qsTr("Trim end")
                seconds: timeline.model.trimEnd
                valueText: timeline.model.timeText(seconds)
                maximumValue: timeline.model.duration
                step: editor.step
                onStepped: direction => editor.adjustTrimEnd(direction)
                onTimeRequested: time => editor.moveTrimEnd(time)
            }

            MouseArea {
                id: pointerArea

                objectName: "trimTimeline"
                // Has the height of the handles, which is slightly more than that of the thumbnails.
                anchors.fill: parent
                anchors.topMargin: -2
                anchors.bottomMargin: -2
                hoverEnabled: true
                preventStealing: true
                cursorShape: editor.cursorShape

                DragCursor {
                    active: pointerArea.pressed
                    shape: editor.cursorShape
                }

                onPressed: mouse => {
                    mouse.accepted = reaches(mouse.x, mouse.y);
                    if (!mouse.accepted)
                        return;
                    editor.press(mouse.x);
                    const grabbed = editor.draggingStart ? startHandle : editor.draggingEnd ? endHandle : position;
                    grabbed.forceActiveFocus(Qt.MouseFocusReason);
                }
                onPositionChanged: mouse => {
                    editor.drag(mouse.x);
                    hoverAt(mouse.x, mouse.y);
                }
                onEntered: hoverAt(mouseX, mouseY)
                onReleased: endDrag()
                onCanceled: endDrag()
                onVisibleChanged: if (!visible) editor.leave()
                // A handle that is being dragged stays hovered.
                onExited: if (!pressed) editor.leave()

                function reaches(x: real, y: real): bool {
                    return editor.reaches(x, y + anchors.topMargin);
                }

                function hoverAt(x: real, y: real) {
                    if (reaches(x, y))
                        editor.hover(x);
                    else if (!pressed)
                        editor.leave();
                }

                function endDrag() {
                    editor.release();
                    if (!containsMouse)
                        editor.leave();
                }
            }
        }
    }
}
