import QtQuick

/// Makes screen readers read a text: each new status, and any text passed to `announce`. Screen readers do not read
/// changes of the status line, but they read a notification when it becomes visible. The item paints nothing.
Item {
    id: announcement

    required property string status

    objectName: "announcement"
    width: 1
    height: 1
    visible: false

    Accessible.role: Accessible.Notification

    function announce(text: string) {
        visible = false;
        Accessible.name = text;
        visible = text.length > 0;
        hideTimer.restart();
    }

    // The initial status is not announced.
    property bool completed: false

    Component.onCompleted: completed = true
    onStatusChanged: if (completed) announce(status)

    // The interval is long enough for a busy screen reader to read the notification. After that the notification is
    // hidden, so that users who explore the window do not find an old text.
    Timer {
        id: hideTimer

        interval: 10000
        onTriggered: announcement.visible = false
    }
}
