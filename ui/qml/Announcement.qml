import QtQuick

/// Announces a text to screen readers: each new status, and any text passed to `say`. Screen readers do not follow
/// changes of the status line, but they read a notification when it becomes visible. The item paints nothing.
Item {
    id: announcement

    required property string status

    objectName: "announcement"
    width: 1
    height: 1
    visible: false

    Accessible.role: Accessible.Notification

    function say(text: string) {
        visible = false;
        Accessible.name = text;
        visible = text.length > 0;
        end.restart();
    }

    // The initial status is not announced.
    property bool begun: false

    Component.onCompleted: begun = true
    onStatusChanged: if (begun) say(status)

    // Long enough for a busy screen reader to read the notification. It is hidden afterwards, so that users who explore
    // the window do not find an old text.
    Timer {
        id: end

        interval: 10000
        onTriggered: announcement.visible = false
    }
}
