pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Stackreel

/// A combo box that selects the aspect ratio of the output.
T.ComboBox {
    id: picker

    implicitWidth: 112
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: 12
    verticalPadding: 7
    rightPadding: 28
    font: Theme.textFont(13, Font.DemiBold)

    Accessible.role: Accessible.ComboBox
    // The focus stays on the combo box while its list is open, so its description names the highlighted row.
    Accessible.description: popup.visible && highlightedIndex >= 0
                            ? qsTr("%1, %2 of %3").arg(textAt(highlightedIndex)).arg(highlightedIndex + 1).arg(count)
                            : displayText
    Accessible.onPressAction: open()

    Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Space && visualFocus
    Keys.onReturnPressed: openByKey()
    Keys.onEnterPressed: openByKey()
    // Qt closes the list on any key release, also when the key that opened it is released.
    Keys.onReleased: event => {
        event.accepted = openingByKey;
        openingByKey = false;
    }

    property bool openingByKey: false

    function openByKey() {
        openingByKey = !popup.visible;
        open();
    }

    /// Opens the list and takes the focus, so that the combo box handles the keys.
    function open() {
        forceActiveFocus(Qt.ShortcutFocusReason);
        popup.open();
    }

    contentItem: Caption {
        text: picker.displayText
        font: picker.font
        spoken: false
    }
    indicator: Image {
        x: picker.width - width - 9
        y: (picker.height - height) / 2
        source: "icons/chevron-up-down.svg"
        width: 12
        height: 16
        sourceSize.width: 12
        sourceSize.height: 16
    }
    background: Rectangle {
        color: Theme.white(picker.down ? 0.16 : 0.09)
        radius: 6

        FocusRing {
            parentRadius: 6
            visible: picker.visualFocus
        }
    }
    delegate: PickerRow {
        required property int index
        required property string modelData

        objectName: "pickerRow" + index
        width: ListView.view ? ListView.view.width : 0
        text: modelData
        chosen: index === picker.currentIndex
        highlighted: index === picker.highlightedIndex
    }
    popup: T.Popup {
        // Qt exposes the popup as a dialog without an accessible name.
        onAboutToShow: contentItem.parent.Accessible.name = picker.Accessible.name

        y: picker.height + 4
        width: picker.width
        padding: 4
        implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
        margins: 8

        contentItem: ListView {
            implicitHeight: contentHeight
            clip: true
            model: picker.delegateModel
            currentIndex: picker.highlightedIndex
            highlightMoveDuration: 0
        }
        background: Rectangle {
            color: Theme.menu
            border.color: Theme.white(0.16)
            radius: 8
        }
    }
}
