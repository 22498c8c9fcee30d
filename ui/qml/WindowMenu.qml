import QtQuick
import QtQuick.Templates as T
import Stackreel

/// A menu of the title bar.
T.Menu {
    id: menu

    implicitWidth: Math.max(180, contentWidth + leftPadding + rightPadding)
    implicitHeight: contentHeight + topPadding + bottomPadding
    margins: 4
    padding: 5
    overlap: 1

    contentItem: ListView {
        implicitHeight: contentHeight
        model: menu.contentModel
        interactive: false
        currentIndex: menu.currentIndex
    }
    // A menu that was opened by a key focuses its first item. Otherwise screen readers would read nothing.
    onOpened: if (((parent as T.MenuBarItem)?.menuBar as WindowMenuBar)?.openedByKey) currentIndex = 0
    // Qt uses the title as the accessible name of dialogs, but not of menus.
    Component.onCompleted: contentItem.parent.Accessible.name = title

    background: Rectangle {
        color: Theme.menu
        border.color: Theme.white(0.16)
        radius: 8
    }
}
