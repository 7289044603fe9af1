pragma Singleton
pragma ComponentBehavior: Bound
import QtQuick

// Colours, text sizes and the usage-colour rule, in one place for every view.
QtObject {
    // The toolkit's standard colours (light appearance).
    readonly property color blue: "#007AFF"
    readonly property color green: "#34C759"
    readonly property color purple: "#AF52DE"
    readonly property color orange: "#FF9500"
    readonly property color pink: "#FF2D55"
    readonly property color indigo: "#5856D6"
    readonly property color red: "#FF3B30"
    readonly property color yellow: "#FFCC00"
    readonly property color gray: "#8E8E93"
    readonly property color accent: blue

    // The program's own palette.
    readonly property color accentGradientStart: "#667eea"
    readonly property color accentGradientEnd: "#764ba2"
    readonly property color diskGreen: "#10b981"
    readonly property color diskYellow: "#f59e0b"
    readonly property color diskRed: "#ef4444"

    // Text and surfaces.
    readonly property color primaryText: "#000000"
    readonly property color secondaryText: Qt.rgba(0, 0, 0, 0.5)
    readonly property color tertiaryText: Qt.rgba(0, 0, 0, 0.26)
    readonly property color textBackground: "#FFFFFF"
    readonly property color windowBackground: "#ECECEC"
    readonly property color material: Qt.rgba(1, 1, 1, 0.6)
    readonly property color divider: Qt.rgba(0, 0, 0, 0.1)
    readonly property color sidebarBackground: Qt.tint(windowBackground, Qt.rgba(1, 1, 1, 0.35))

    // Text styles, in points.
    readonly property int titleSize: 22
    readonly property int title2Size: 17
    readonly property int headlineSize: 13
    readonly property int bodySize: 13
    readonly property int subheadlineSize: 11
    readonly property int captionSize: 10

    readonly property string monospaceFamily: "DejaVu Sans Mono"

    function withOpacity(c, opacity) {
        return Qt.rgba(c.r, c.g, c.b, c.a * opacity)
    }

    // `c` laid over the opaque `background`, as one opaque colour.
    function over(c, background) {
        const a = c.a
        return Qt.rgba(c.r * a + background.r * (1 - a), c.g * a + background.g * (1 - a),
                       c.b * a + background.b * (1 - a), 1)
    }

    function relativeLuminance(c) {
        const linear = v => v <= 0.04045 ? v / 12.92 : Math.pow((v + 0.055) / 1.055, 2.4)
        return 0.2126 * linear(c.r) + 0.7152 * linear(c.g) + 0.0722 * linear(c.b)
    }

    function contrastRatio(a, b) {
        const la = relativeLuminance(a)
        const lb = relativeLuminance(b)
        return (Math.max(la, lb) + 0.05) / (Math.min(la, lb) + 0.05)
    }

    // Many of the palette's colours are too light to read against white, or to carry white text:
    // `tint` (opaque) is darkened just enough to stand `ratio` against `other`, keeping its hue so
    // a badge still reads as its category. A small margin over the asked ratio absorbs the
    // rounding of 8-bit colours. Table cells ask for the same few pairs again and again, so the
    // answers are kept.
    readonly property var readableCache: ({})
    function readable(tint, other, ratio) {
        const key = tint + "/" + other + "/" + ratio
        const known = readableCache[key]
        if (known !== undefined)
            return known
        let shade = Qt.rgba(tint.r, tint.g, tint.b, 1)
        for (let factor = 1; factor > 0 && contrastRatio(shade, other) < ratio + 0.05; factor -= 0.02)
            shade = Qt.rgba(tint.r * factor, tint.g * factor, tint.b * factor, 1)
        readableCache[key] = shade
        return shade
    }

    // Usage in percent of a volume: 0 when the volume reports no size.
    function usagePercent(usedBytes, totalBytes) {
        return totalBytes >= 1 ? usedBytes / totalBytes * 100 : 0
    }

    // Below 70 % green, below 85 % yellow, else red; green when the volume reports no size.
    function usageColor(percent, totalBytes) {
        if (totalBytes !== undefined && totalBytes < 1)
            return diskGreen
        if (percent < 70)
            return diskGreen
        if (percent < 85)
            return diskYellow
        return diskRed
    }
}
