import QtQuick
import Stackreel

/// The title of a section of the inspector.
Caption {
    font: Theme.titleFont(17)
    Accessible.role: Accessible.Heading
}
