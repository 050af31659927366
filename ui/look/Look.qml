pragma Singleton
import QtQuick
import Tessary.Look

// What all screens share: colours by what they are for, text styles by what they say, and the standard lengths in
// points. Screens name these and hold no values of their own.
QtObject {
    id: look

    readonly property bool dark: DesktopTheme.dark
    readonly property bool highContrast: DesktopTheme.highContrast
    readonly property bool animations: DesktopTheme.animations

    // With high contrast text stands out by 7:1 and what is drawn by 3:1, each from all that it lies on.
    readonly property color ink: dark ? white : black
    readonly property color paper: dark ? black : white

    readonly property color windowBackgroundColor: tone("#ececec", "#323232", "#f4f4f4", "#121212")
    readonly property color controlBackgroundColor: highContrast ? paper : dark ? "#1e1e1e" : "#ffffff"
    readonly property color textBackgroundColor: highContrast ? paper : dark ? "#161618" : "#f5f5f7"
    readonly property color shadowColor: black
    readonly property color separatorColor: tone(Qt.rgba(0, 0, 0, 0.1), Qt.rgba(1, 1, 1, 0.1), "#595959", "#a0a0a0")
    /// A separator around what can be used.
    readonly property color outlineColor: tone(Qt.rgba(0, 0, 0, 0.43), Qt.rgba(1, 1, 1, 0.36), "#595959", "#a0a0a0")
    /// What a bar fills up. With high contrast the fill stands out from it.
    readonly property color trackColor: highContrast ? paper : separatorColor
    /// Around what nothing but its tone tells from its ground; with high contrast that is not enough.
    readonly property color plainOutlineColor: highContrast ? separatorColor : transparent
    readonly property color labelColor: highContrast ? ink : dark ? Qt.rgba(1, 1, 1, 0.85) : Qt.rgba(0, 0, 0, 0.85)
    readonly property color secondaryLabelColor: highContrast ? ink : dark ? Qt.rgba(1, 1, 1, 0.58) : Qt.rgba(0, 0, 0, 0.68)
    readonly property color tertiaryLabelColor: tone(Qt.rgba(0, 0, 0, 0.43), Qt.rgba(1, 1, 1, 0.34), "#404040", "#c8c8c8")
    readonly property color placeholderTextColor: tone(Qt.rgba(0, 0, 0, 0.55), Qt.rgba(1, 1, 1, 0.46), "#404040", "#c8c8c8")
    readonly property color systemBlueColor: tone("#007aff", "#0a84ff", "#0040b0", "#6cb6ff")
    readonly property color systemGrayColor: tone("#747479", "#747479", "#484848", "#b8b8b8") // below white text
    readonly property color grayTextColor: tone("#5e5e63", "#aeaeb3", "#404040", "#c8c8c8")
    readonly property color systemGreenColor: tone("#28cd41", "#32d74b", "#009132", "#16a34a")
    /// Around it where it is too light for what it lies on.
    readonly property color greenEdgeColor: dark || highContrast ? transparent : "#009132"
    readonly property color systemRedColor: tone("#ff3b30", "#ff453a", "#980000", "#ff9a94")
    readonly property color systemYellowColor: dark ? "#ffd60a" : "#ffcc00"
    /// Around and in a sign of it where it is too light for what it lies on.
    readonly property color yellowEdgeColor: dark ? transparent : labelColor
    readonly property color alternateSelectedControlTextColor: highContrast ? paper : white
    readonly property color selectedControlColor: dark ? "#3f638b" : "#b3d7ff"
    readonly property color selectedTextBackgroundColor: tone("#b3d7ff", "#3f638a", "#b3d7ff", "#24486c")
    /// Over a control while it is held.
    readonly property color pressedColor: tone(Qt.rgba(0, 0, 0, 0.12), Qt.rgba(1, 1, 1, 0.16), Qt.rgba(0, 0, 0, 0.3), Qt.rgba(1, 1, 1, 0.3))
    readonly property color accentColor: highContrast ? systemBlueColor : DesktopTheme.accent
    readonly property color accentTextColor: highContrast ? paper : DesktopTheme.textOnAccent
    readonly property color disabledAccentColor: highContrast ? systemGrayColor : faded(accentColor, 0.6)
    readonly property color sidebarColor: dark ? "#2b2b2d" : "#e7e7ea"
    readonly property color noticeColor: "#262626" // white level 0.15
    readonly property color black: "#000000"
    readonly property color white: "#ffffff"
    readonly property color transparent: "transparent"

    readonly property font body: DesktopTheme.scaled(DesktopTheme.font, 1, Font.Normal)
    readonly property font title: DesktopTheme.scaled(DesktopTheme.font, 1.69, Font.Bold)
    readonly property font roundedTitle: DesktopTheme.inFirstOf(["Nunito", "Quicksand", "Varela Round"], title)
    readonly property font title2: DesktopTheme.scaled(DesktopTheme.font, 1.31, Font.DemiBold)
    readonly property font boldTitle2: DesktopTheme.scaled(DesktopTheme.font, 1.31, Font.Bold)
    readonly property font headline: DesktopTheme.scaled(DesktopTheme.font, 1, Font.Bold)
    readonly property font subheadline: DesktopTheme.scaled(DesktopTheme.font, 0.85, Font.Normal)
    readonly property font caption: DesktopTheme.scaled(DesktopTheme.font, 0.77, Font.Normal)
    readonly property font monospacedCaption: DesktopTheme.monospaced(caption)
    readonly property font heading: DesktopTheme.sized(DesktopTheme.font, 24, Font.DemiBold)

    readonly property real padding: 16
    readonly property real spacing: 8

    // Sizes of symbols, as those of the text that they go with.
    readonly property real bodySymbol: DesktopTheme.pointsOf(body)
    readonly property real wideSymbol: 1.28 * bodySymbol // of a drawing that is wider than high
    readonly property real buttonSymbol: 18
    readonly property real zoneSymbol: 24
    readonly property real headerSymbol: 24 * 1.3
    readonly property real badgeSymbol: 40

    readonly property var dashes: [5, 5]

    readonly property var easeInOut: [0.42, 0, 0.58, 1, 1, 1]
    readonly property var easeOut: [0, 0, 0.58, 1, 1, 1]
    readonly property real standardSeconds: 0.35
    /// In milliseconds. So long after something went away by itself a press may still have been aimed at it.
    readonly property int reactionTime: 500

    /// In milliseconds. What goes on and on moves in steps of this length, which begin together, so that they share their
    /// frames.
    readonly property int beat: 150

    function tone(light: color, dark: color, strongLight: color, strongDark: color): color {
        return highContrast ? look.dark ? strongDark : strongLight : look.dark ? dark : light;
    }

    function mixed(from: color, to: color, amount: real): color {
        const share = Math.max(0, Math.min(amount, 1));
        const part = (a, b) => a + (b - a) * share;
        return Qt.rgba(part(from.r, to.r), part(from.g, to.g), part(from.b, to.b), part(from.a, to.a));
    }

    /// What is seen where the one colour, in part, covers the other.
    function over(below: color, above: color, amount: real): color {
        const share = above.a * Math.max(0, Math.min(amount, 1));
        const rest = below.a * (1 - share);
        const whole = share + rest;
        if (whole === 0)
            return transparent;
        const part = (a, b) => (a * share + b * rest) / whole;
        return Qt.rgba(part(above.r, below.r), part(above.g, below.g), part(above.b, below.b), whole);
    }

    /// The place nearest to one in points that lies between two device pixels.
    function snapped(place: real, devicePixelRatio: real): real {
        return Math.round(place * devicePixelRatio) / devicePixelRatio;
    }

    function faded(base: color, opacity: real): color {
        return Qt.rgba(base.r, base.g, base.b, base.a * opacity);
    }
}
