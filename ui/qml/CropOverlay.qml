import QtQuick
import Stackreel

/// Shows one crop over the picture and edits it by pointer, keys and assistive technology. The item covers the whole
/// picture. It emits signals to request its selection and changes of its region; the owner applies them.
Item {
    id: overlay

    required property string label
    required property color color
    required property rect region ///< in fractions of the picture
    required property real panelAspect
    required property size sourceSize ///< the picture in source pixels
    required property bool selected
    readonly property alias control: body ///< the item that takes the focus

    signal selectRequested()
    signal regionEdited(region: rect)

    CropEditor {
        id: editor

        region: overlay.region
        panelAspect: overlay.panelAspect
        viewSize: Qt.size(overlay.width, overlay.height)
        sourceSize: overlay.sourceSize
        onSelectRequested: overlay.selectRequested()
        onRegionEdited: region => overlay.regionEdited(region)
    }

    FocusItem {
        id: body

        objectName: "body"
        x: editor.displayRect.x
        y: editor.displayRect.y
        width: editor.displayRect.width
        height: editor.displayRect.height

        /// Whether an arrow key was used since the item got the focus. If so, the description omits the help text.
        property bool keysUsed: false

        Keys.onPressed: event => {
            event.accepted = editor.handleKey(event.key, event.modifiers);
            keysUsed = keysUsed || event.accepted;
        }
        onActiveFocusChanged: if (!activeFocus) keysUsed = false

        readonly property string keysHelp: qsTr("Arrow keys move the crop, with Control they resize it")

        // A radio button, because exactly one of the two crops is selected.
        Accessible.role: Accessible.RadioButton
        Accessible.name: overlay.label
        Accessible.description: keysUsed ? editor.geometryText : editor.geometryText + ". " + keysHelp
        Accessible.checkable: true
        Accessible.checked: overlay.selected
        Accessible.onPressAction: overlay.selectRequested()
        Accessible.onToggleAction: overlay.selectRequested()
        Accessible.onIncreaseAction: editor.stepResize(CropEditor.LongStep, 0)
        Accessible.onDecreaseAction: editor.stepResize(-CropEditor.LongStep, 0)
        Accessible.onScrollLeftAction: editor.stepMove(-CropEditor.LongStep, 0)
        Accessible.onScrollRightAction: editor.stepMove(CropEditor.LongStep, 0)
        Accessible.onScrollUpAction: editor.stepMove(0, -CropEditor.LongStep)
        Accessible.onScrollDownAction: editor.stepMove(0, CropEditor.LongStep)

        Rectangle {
            objectName: "fill"
            anchors.fill: parent
            color: Theme.faded(overlay.color, overlay.selected ? 0.16 : 0.09)
        }

        Rectangle {
            objectName: "stroke"
            // The line is centred on the edge: half of its width lies outside.
            anchors.fill: parent
            anchors.margins: -border.width / 2
            color: "transparent"
            border.color: overlay.color
            border.width: overlay.selected ? 4 : 2
        }

        DragArea {
            referenceItem: overlay
            focusTarget: body
            cursorShape: Qt.SizeAllCursor
            onClicked: overlay.selectRequested()
            onDragged: (x, y) => editor.move(x, y)
            onEnded: editor.endMove()
        }

        Rectangle {
            objectName: "badge"
            x: 6
            y: 6
            width: badgeText.width + 18
            height: badgeText.height + 10
            radius: 4
            color: overlay.color

            Caption {
                id: badgeText

                objectName: "badgeText"
                x: 9
                y: 5
                text: overlay.label
                font: Theme.textFont(15, Font.Bold)
                color: "black"
                spoken: false
            }
        }

        ResizeHandle {
            objectName: "resizeHandle"
            x: parent.width - width
            y: parent.height - height
            mark: overlay.color
            visible: overlay.selected

            DragArea {
                referenceItem: overlay
                focusTarget: body
                cursorShape: Qt.SizeFDiagCursor
                onDragged: (x, y) => editor.resize(x, y)
                onEnded: editor.endResize()
            }
        }

        FocusRing {
            parentRadius: 0
            distance: 5
            visible: body.visualFocus
        }
    }
}
