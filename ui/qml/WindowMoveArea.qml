import QtQuick

/// What the window is moved by, and maximised by a double click. The desktop does the moving, from when the pointer
/// has moved and not from the press, which would take clicks away from whoever else wants them.
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
