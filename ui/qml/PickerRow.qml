import QtQuick
import QtQuick.Templates as T
import Stackreel

/// One row in the list of `AspectPicker`.
T.ItemDelegate {
    id: row

    property bool chosen: false

    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    leftPadding: 26
    rightPadding: 10
    verticalPadding: 6
    hoverEnabled: true
    font: Theme.textFont(13, Font.DemiBold)

    Accessible.role: Accessible.ListItem
    Accessible.name: text
    Accessible.selectable: true
    Accessible.selected: chosen
    Accessible.onPressAction: clicked()

    contentItem: Caption {
        text: row.text
        font: row.font
        color: row.highlighted ? "black" : "white"
        spoken: false
    }
    background: Rectangle {
        color: row.highlighted ? Theme.signalCoral : "transparent"
        radius: 5

        Rectangle {
            x: 11
            width: 6
            height: 6
            radius: 3
            anchors.verticalCenter: parent.verticalCenter
            color: row.highlighted ? "black" : Theme.signalCoral
            visible: row.chosen
        }
    }
}
