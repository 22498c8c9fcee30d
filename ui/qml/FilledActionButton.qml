import QtQuick
import QtQuick.Layouts
import Stackreel

/// A button for a primary action, filled with the accent colour. With `fillsWidth` it fills the width of its layout and
/// shows its symbol at the right edge.
ActionButton {
    id: button

    property color color: Theme.signalCoral
    property bool fillsWidth: false
    property url symbol
    property bool busy: false ///< shows a spinner instead of the symbol

    Layout.fillWidth: fillsWidth
    horizontalPadding: 16
    verticalPadding: 11

    contentItem: RowLayout {
        spacing: 8

        Caption {
            objectName: "label"
            Layout.fillWidth: true
            text: button.text
            font: button.font
            color: button.enabled ? "black" : Theme.white(0.42)
            elide: Text.ElideRight
            spoken: false
        }

        Spinner {
            objectName: "spinner"
            implicitWidth: 16
            color: "black"
            visible: button.busy
            Accessible.ignored: true
        }

        Image {
            objectName: "symbol"
            source: button.symbol
            Layout.preferredWidth: 14
            Layout.preferredHeight: 14
            sourceSize.width: 14
            sourceSize.height: 14
            visible: status === Image.Ready && !button.busy
        }
    }
    background: Rectangle {
        color: button.enabled ? Theme.faded(button.color, button.down ? 0.8 : 1) : Theme.white(0.07)
        radius: button.cornerRadius
    }
}
