pragma Singleton

import QtQuick
import Brenvale

// Sizes, colours and motion of everything in the window. Colours derive from the desktop's palette and the
// type scale from its font, and follow both while the program runs.
QtObject {
    id: theme

    // The type scale: 13 px is the desktop's own size, and the rest keeps its proportion to it.

    readonly property real textScale: Desktop.fontPixelSize / 13
    readonly property real iconScale: Math.max(1, textScale) // icons grow with the text beside them
    readonly property font largeTitle: sized(26)
    readonly property font title: sized(22)
    readonly property font title2: sized(17)
    readonly property font title2Bold: sized(17, Font.Bold)
    readonly property font title3: sized(15)
    readonly property font headline: sized(13, Font.DemiBold)
    readonly property font body: sized(13)
    readonly property font callout: sized(12)
    readonly property font subheadline: sized(11)
    readonly property font footnote: sized(10)
    readonly property font caption: sized(10)
    readonly property font caption2: sized(10)

    // Space and shape, on a grid of 4.

    readonly property int spacing: 8
    readonly property int padding: 16
    readonly property int rowPaddingVertical: 8
    readonly property int listRowInset: 4 // of every row of a list, around the padding of its own
    readonly property int controlHeight: Math.round(28 * Math.max(1, textScale))
    readonly property int largeControlHeight: Math.round(34 * Math.max(1, textScale))
    readonly property int smallControlHeight: Math.round(22 * Math.max(1, textScale))
    readonly property int controlRadius: 6
    readonly property int fieldRadius: 8
    readonly property int cardRadius: 12
    readonly property int cardInset: 16 // of what stands on a card, and of the titles above and below it
    readonly property int bubbleRadius: 16
    readonly property int formWidth: 720
    readonly property int focusRingWidth: 2

    readonly property int motionDuration: Desktop.isAnimated ? 150 : 0
    readonly property int motionEasing: Easing.OutCubic

    // Colours

    readonly property SystemPalette palette: SystemPalette {
        colorGroup: SystemPalette.Active
    }
    readonly property bool isDark: luminance(palette.window) < luminance(palette.windowText)
    readonly property bool isHighContrast: contrast(palette.windowText, palette.window) > 20

    readonly property color windowBackground: palette.window
    // What lies on the window is never a hole in it.
    readonly property color controlBackground: luminance(palette.base) < luminance(palette.window)
                                             ? mixed(palette.window, palette.windowText, 0.07) : palette.base
    readonly property color underPageBackground: mixed(palette.window, palette.windowText, 0.04)
    readonly property color primary: palette.windowText
    readonly property color secondary: faded(0.6)
    readonly property color tertiary: faded(0.35)
    readonly property color hairline: withOpacity(palette.windowText, isHighContrast ? 1 : 0.12)
    readonly property color hover: withOpacity(palette.windowText, 0.05)
    readonly property color pressed: withOpacity(palette.windowText, 0.1)
    readonly property color fieldBorder: withOpacity(palette.windowText, isHighContrast ? 1 : 0.2)

    readonly property color white: "#ffffff"
    readonly property color black: "#000000"
    readonly property color tint: palette.highlight
    readonly property color tintText: readable(tint)
    readonly property color textOnTint: palette.highlightedText

    // The tint below text, so much deeper that the text can be read; below what is selected it is a shade.
    readonly property color tintFill: strengthened(tint, textOnTint)
    readonly property color selection: isHighContrast ? withOpacity(tint, 0.4) : withOpacity(tint, 0.22)

    readonly property color focusRing: readable(tint, 3)

    // One blue a window: below white text, and by itself.
    readonly property color blueFill: strengthened(isTintBlue ? tint : isDark ? "#3d8bff" : "#0a6cff", white)
    readonly property bool isTintBlue: tint.hslHue > 0.52 && tint.hslHue < 0.7 && tint.hslSaturation > 0.35
    readonly property color blue: isTintBlue ? readable(tint, 3) : isDark ? "#3d8bff" : "#0a6cff"
    readonly property color green: isDark ? "#32c759" : "#1f9d3f"
    readonly property color red: isDark ? "#ff5147" : "#d92b20"
    readonly property color orange: isDark ? "#ff9f1a" : "#e07b00"
    readonly property color purple: isDark ? "#b268f0" : "#8e44d6"
    readonly property color yellow: isDark ? "#ffd23f" : "#c79a00"
    readonly property color grey: isDark ? "#98989d" : "#8a8a8e"

    // Functions of the above

    // A size of the scale that no style names, as `font: Theme.sized(48)`.
    function sized(pixelSize, weight) {
        return Qt.font({
            family: Desktop.fontFamily,
            pixelSize: Math.max(1, Math.round(pixelSize * textScale)),
            weight: weight === undefined ? Font.Normal : weight
        });
    }

    // For text in a shape of a fixed size, which has room for `mostPixels`.
    function fitted(pixelSize, mostPixels, weight) {
        return sized(Math.min(pixelSize, mostPixels / textScale), weight);
    }

    // What is to stand on one line; it may be a book.
    function oneLine(text) {
        return text.slice(0, 600).replace(/[\uD800-\uDBFF]$/, "").replace(/\s+/g, " ");
    }

    function monospaced(style, weight) {
        return Qt.font({
            family: Desktop.fixedFontFamily,
            pixelSize: style.pixelSize,
            weight: weight === undefined ? style.weight : weight
        });
    }

    function weighted(style, weight) {
        return Qt.font({family: style.family, pixelSize: style.pixelSize, weight: weight});
    }

    function withOpacity(base, opacity) {
        return Qt.rgba(base.r, base.g, base.b, opacity);
    }

    // `share` of `over` on `under`, both opaque.
    function mixed(under, over, share) {
        return Qt.rgba(under.r + (over.r - under.r) * share, under.g + (over.g - under.g) * share,
                       under.b + (over.b - under.b) * share, 1);
    }

    function luminance(shade) {
        const linear = part => part <= 0.04045 ? part / 12.92 : Math.pow((part + 0.055) / 1.055, 2.4);
        return 0.2126 * linear(shade.r) + 0.7152 * linear(shade.g) + 0.0722 * linear(shade.b);
    }

    function contrast(one, other) {
        const lights = [luminance(one), luminance(other)];
        return (Math.max(lights[0], lights[1]) + 0.05) / (Math.min(lights[0], lights[1]) + 0.05);
    }

    // The lower contrast of `shade` to the backgrounds that text stands on; that of pages is nearer to the text than
    // that of the window.
    function textContrast(shade) {
        return Math.min(contrast(shade, underPageBackground), contrast(shade, controlBackground));
    }

    // The text's colour at `opacity`, or as much more as it takes for the contrast `least`: 4.5, what can be read,
    // if not said.
    function faded(opacity, least) {
        let share = isHighContrast ? 1 : opacity;
        while (share < 1 && textContrast(mixed(palette.window, palette.windowText, share)) < (least ?? 4.5)) {
            share += 0.02;
        }
        return mixed(palette.window, palette.windowText, Math.min(share, 1));
    }

    // `shade` as a colour of text on the window or on a card, moved to the text's colour until it can be read.
    function readable(shade, least) {
        let result = shade;
        for (let share = 0.05; share <= 1 && textContrast(result) < (least ?? 4.5); share += 0.05) {
            result = mixed(shade, palette.windowText, share);
        }
        return result;
    }

    // `fill` moved away from the colour of the text on it until that has the contrast `least`, 4.5 if not said.
    function strengthened(fill, text, least) {
        const far = luminance(text) > 0.5 ? black : white;
        let result = fill;
        for (let share = 0.02; share <= 1 && contrast(text, result) < (least ?? 4.5); share += 0.02) {
            result = mixed(fill, far, share);
        }
        return result;
    }
}
