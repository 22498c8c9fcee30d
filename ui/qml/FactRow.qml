import QtQuick
import QtQuick.Layouts
import Stackreel

/// One property of the source: its label at the left, its value at the right.
RowLayout {
    id: row

    property string label
    property string value

    spacing: 8

    Caption {
        objectName: "label"
        text: row.label
        color: Theme.white(0.62)
    }

    Caption {
        id: valueText

        objectName: "value"
        Layout.fillWidth: true
        text: row.value
        font: Theme.fixedFont(13)
        horizontalAlignment: Text.AlignRight
        elide: Text.ElideMiddle

        HoverHandler {
            id: pointer
        }

        HoverHint {
            text: row.value
            shown: pointer.hovered && valueText.truncated
        }
    }
}
