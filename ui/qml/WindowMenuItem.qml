import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Stackreel

/// A menu item. `keys` is the text of its shortcut, shown at the right.
T.MenuItem {
    id: item

    property string keys

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: 10
    verticalPadding: 7
    hoverEnabled: true

    Accessible.name: text
    // Qt 6.4 does not expose the disabled state to assistive technology.
    Accessible.description: enabled ? keys : qsTr("Not available now")
    Accessible.onPressAction: if (enabled) triggered()

    contentItem: RowLayout {
        spacing: 28

        Caption {
            Layout.fillWidth: true
            text: item.text
            opacity: item.enabled ? 1 : 0.42
            spoken: false
        }
        Caption {
            text: item.keys
            color: Theme.white(item.enabled ? 0.62 : 0.3)
            spoken: false
        }
    }
    background: Rectangle {
        radius: 5
        color: Theme.white(item.highlighted && item.enabled ? 0.12 : 0)
    }
}
