import QtQuick
import Stackreel

/// The whole content of the main window.
Item {
    id: view

    required property WindowModel model
}
