pragma Singleton

import QtQuick
import Stackreel

/// Colours and fonts of the window. Sizes are in points; one point is one device-independent pixel.
QtObject {
    readonly property color graphite: Qt.rgba(0.055, 0.065, 0.08, 1) ///< window background
    readonly property color panel: Qt.rgba(0.095, 0.11, 0.135, 1) ///< inspector background
    readonly property color stage: Qt.rgba(0.025, 0.03, 0.04, 1) ///< workspace background
    readonly property color signalCoral: Qt.rgba(1.0, 0.353, 0.239, 1) ///< accent
    readonly property color shellCoral: Qt.rgba(1.0, 0.72, 0.65, 1) ///< bottom crop
    readonly property color menu: Qt.rgba(0.15, 0.17, 0.2, 1) ///< background of menus and tool tips

    readonly property int hintDelay: 700 ///< milliseconds of hovering before a tool tip is shown

    function white(opacity: real): color {
        return Qt.rgba(1, 1, 1, opacity);
    }

    function black(opacity: real): color {
        return Qt.rgba(0, 0, 0, opacity);
    }

    function faded(base: color, opacity: real): color {
        return Qt.rgba(base.r, base.g, base.b, opacity);
    }

    function textFont(size: int, weight: int): font {
        return Qt.font({ family: Typefaces.text, pixelSize: size, weight: weight,
                         hintingPreference: Font.PreferVerticalHinting });
    }

    /// Rounded letters in the heaviest weight.
    function titleFont(size: int): font {
        return Qt.font({ family: Typefaces.title, pixelSize: size, weight: Font.Black,
                         hintingPreference: Font.PreferVerticalHinting });
    }

    function fixedFont(size: int): font {
        return Qt.font({ family: Typefaces.fixed, pixelSize: size, weight: Font.DemiBold,
                         hintingPreference: Font.PreferVerticalHinting });
    }
}
