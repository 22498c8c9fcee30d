pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Stackreel

/// The menus' titles in the title strip.
T.MenuBar {
    id: bar

    /// Whether the menus are opened by keys or assistive technology, and not by the pointer.
    property bool byKey: false

    /// Opens the first menu, as from the keyboard.
    function openFirst() {
        byKey = true;
        const first = itemAt(0) as T.MenuBarItem;
        first.forceActiveFocus(Qt.ShortcutFocusReason);
        first.triggered();
    }

    implicitWidth: contentWidth

    delegate: T.MenuBarItem {
        id: title

        implicitWidth: implicitContentWidth + leftPadding + rightPadding
        height: bar.height
        horizontalPadding: 9
        onPressed: bar.byKey = false
        hoverEnabled: true

        // To assistive technology its text stands for it, as Qt 6.4 makes each title a menu bar of its own.
        Accessible.ignored: true

        contentItem: Caption {
            text: title.text
            verticalAlignment: Text.AlignVCenter
            color: Theme.white(title.highlighted || title.hovered ? 1 : 0.78)

            Accessible.role: Accessible.MenuItem
            Accessible.onPressAction: {
                bar.byKey = true;
                title.triggered();
            }
        }
        background: Rectangle {
            anchors.fill: parent
            anchors.topMargin: 4
            anchors.bottomMargin: 4
            radius: 5
            color: Theme.white(title.highlighted || title.down ? 0.14 : title.hovered ? 0.08 : 0)
        }
    }

    contentItem: Row {
        Repeater {
            model: bar.contentModel
        }
    }
}
