pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Stackreel

/// The menu bar inside the title bar.
T.MenuBar {
    id: bar

    /// Whether the open menu was opened by a key or by assistive technology, not by the pointer.
    property bool openedByKey: false

    /// Opens the first menu as if the user had opened it with a key.
    function openFirst() {
        openedByKey = true;
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
        onPressed: bar.openedByKey = false
        hoverEnabled: true

        // Qt 6.4 exposes each menu bar item as a menu bar, so assistive technology gets the content item instead.
        Accessible.ignored: true

        contentItem: Caption {
            text: title.text
            verticalAlignment: Text.AlignVCenter
            color: Theme.white(title.highlighted || title.hovered ? 1 : 0.78)

            Accessible.role: Accessible.MenuItem
            Accessible.onPressAction: {
                bar.openedByKey = true;
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
