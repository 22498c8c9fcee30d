import QtQuick
import QtQuick.Layouts
import Stackreel

/// The inspector's section for the size and aspect ratio of the output.
ColumnLayout {
    id: section

    required property WindowModel model

    /// Requests that screen readers read the text, because no focused control reports this change.
    signal announceRequested(text: string)

    objectName: "frameSection"
    spacing: 12

    SectionTitle {
        objectName: "frameTitle"
        text: qsTr("Frame")
    }

    RowLayout {
        spacing: 8

        Caption {
            objectName: "aspectLabel"
            Layout.fillWidth: true
            text: qsTr("Aspect ratio")
            spoken: false
        }

        AspectPicker {
            objectName: "aspectPicker"
            model: section.model.aspectLabels
            currentIndex: section.model.aspectIndex
            Accessible.name: qsTr("Aspect ratio")
            onActivated: index => section.model.aspectIndex = index
        }
    }

    RowLayout {
        objectName: "customSize"
        spacing: 10
        visible: section.model.customSize

        DimensionField {
            objectName: "widthField"
            Layout.fillWidth: true
            title: qsTr("Width")
            value: section.model.customWidth
            onCommitted: typed => section.model.setCustomWidth(typed)
        }

        Caption {
            objectName: "times"
            text: "×"
            color: Theme.white(0.5)
            spoken: false
        }

        DimensionField {
            objectName: "heightField"
            Layout.fillWidth: true
            title: qsTr("Height")
            value: section.model.customHeight
            onCommitted: typed => section.model.setCustomHeight(typed)
        }
    }

    OutlineActionButton {
        objectName: "swapButton"
        Layout.fillWidth: true
        text: qsTr("Swap top and bottom")
        enabled: section.model.editable
        onClicked: {
            section.model.swapCrops();
            section.announceRequested(qsTr("Top and bottom swapped"));
        }
    }
}
