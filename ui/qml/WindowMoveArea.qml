import QtQuick

/// An area that moves the window when dragged and maximizes it on a double click. The window manager moves the window.
/// The move starts when the pointer moves, not when it is pressed, because other handlers would then miss the click.
Item {
    id: area

    required property Window window

    DragHandler {
        target: null
        acceptedButtons: Qt.LeftButton
        dragThreshold: 4
        onActiveChanged: {
            if (active)
                area.window.startSystemMove();
        }
    }

    TapHandler {
        acceptedButtons: Qt.LeftButton
        onDoubleTapped: {
            if (area.window.visibility === Window.Maximized)
                area.window.showNormal();
            else
                area.window.showMaximized();
        }
    }
}
