import QtQuick
import QtQuick.Templates as T
import Stackreel

/// A line between groups of menu items.
T.MenuSeparator {
    implicitWidth: 60
    implicitHeight: 11
    verticalPadding: 5

    contentItem: Rectangle {
        color: Theme.white(0.14)
    }
}
