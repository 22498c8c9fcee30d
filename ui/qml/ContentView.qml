import QtQuick
import QtQuick.Layouts
import Stackreel

/// The content of the main window, below the title bar. `dragArea` lies behind the texts and the button of the header;
/// dragging it moves the window.
Item {
    id: view

    required property WindowModel model
    readonly property alias dragArea: header.dragArea

    /// Makes screen readers read a text, whichever item has the focus.
    function announce(text: string) {
        announcement.announce(text);
    }

    Announcement {
        id: announcement

        status: view.model.phaseMessage
    }

    Connections {
        target: view.model

        function onExportOfReplacedSourceEnded(message: string) {
            view.announce(message);
            notice.add(message);
        }
    }

    FocusFallback {
        id: focusFallback

        model: view.model
        content: view
        editingFallback: workspace.firstControl
        otherFallback: header.chooseControl
    }

    Rectangle {
        objectName: "background"
        anchors.fill: parent
        color: Theme.graphite
    }

    // A press outside all controls takes the focus from a text field, which ends editing.
    MouseArea {
        anchors.fill: parent
        onPressed: forceActiveFocus(Qt.MouseFocusReason)
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.leftMargin: 24
        anchors.rightMargin: 24
        anchors.topMargin: 22
        anchors.bottomMargin: 22
        spacing: 18

        Header {
            id: header

            objectName: "header"
            Layout.fillWidth: true
            model: view.model
        }

        RowLayout {
            spacing: 18

            Workspace {
                id: workspace

                objectName: "workspace"
                Layout.fillWidth: true
                Layout.fillHeight: true
                model: view.model
            }

            Inspector {
                objectName: "inspector"
                Layout.fillHeight: true
                Layout.preferredWidth: 310
                model: view.model
                onAnnounceRequested: text => view.announce(text)
            }
        }
    }

    Notice {
        id: notice

        model: view.model
        // Above the preview, where it covers no control of the inspector.
        x: 24 + (workspace.width - width) / 2
        y: 22 + header.height + 30
        width: Math.min(560, workspace.width - 24)
        onVisibleChanged: focusFallback.deferredUpdate.start()
    }
}
