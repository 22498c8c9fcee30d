import QtQuick

/// What assistive technology is to say unasked: each new status, and what it is given to say. Screen readers do not
/// follow the status line; they read out a notification when it shows. This one is not to be seen.
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

    // The first status is there from the beginning.
    property bool begun: false

    Component.onCompleted: begun = true
    onStatusChanged: if (begun) say(status)

    // Until then a busy screen reader has come to read it, and later nobody is to find it when looking around.
    Timer {
        id: end

        interval: 10000
        onTriggered: announcement.visible = false
    }
}
