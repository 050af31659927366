pragma Singleton
import QtQuick
import Tessary

// What all screens share: colours by what they are for, text styles by what they say, and the standard lengths in
// points. Screens name these and hold no values of their own.
QtObject {
    id: look

    readonly property bool dark: Desktop.dark

    readonly property color windowBackgroundColor: dark ? "#323232" : "#ececec"
    readonly property color controlBackgroundColor: dark ? "#1e1e1e" : "#ffffff"
    readonly property color textBackgroundColor: dark ? "#1e1e1e" : "#ffffff"
    readonly property color shadowColor: black
    readonly property color separatorColor: dark ? Qt.rgba(1, 1, 1, 0.1) : Qt.rgba(0, 0, 0, 0.1)
    readonly property color labelColor: dark ? Qt.rgba(1, 1, 1, 0.85) : Qt.rgba(0, 0, 0, 0.85)
    readonly property color secondaryLabelColor: dark ? Qt.rgba(1, 1, 1, 0.55) : Qt.rgba(0, 0, 0, 0.5)
    readonly property color tertiaryLabelColor: dark ? Qt.rgba(1, 1, 1, 0.25) : Qt.rgba(0, 0, 0, 0.26)
    readonly property color placeholderTextColor: dark ? Qt.rgba(1, 1, 1, 0.25) : Qt.rgba(0, 0, 0, 0.25)
    readonly property color systemBlueColor: dark ? "#0a84ff" : "#007aff"
    readonly property color systemGrayColor: dark ? "#98989d" : "#8e8e93"
    readonly property color systemGreenColor: dark ? "#32d74b" : "#28cd41"
    readonly property color systemRedColor: dark ? "#ff453a" : "#ff3b30"
    readonly property color systemYellowColor: dark ? "#ffd60a" : "#ffcc00"
    readonly property color alternateSelectedControlTextColor: white
    readonly property color selectedControlColor: dark ? "#3f638b" : "#b3d7ff"
    readonly property color selectedTextBackgroundColor: dark ? "#3f638a" : "#b3d7ff"
    readonly property color accentColor: Desktop.accent
    readonly property color accentTextColor: Desktop.textOnAccent
    readonly property color sidebarColor: dark ? "#2b2b2d" : "#e7e7ea"
    readonly property color noticeColor: "#262626" // white level 0.15
    readonly property color black: "#000000"
    readonly property color white: "#ffffff"
    readonly property color transparent: "transparent"

    readonly property font body: Desktop.scaled(Desktop.font, 1, Font.Normal)
    readonly property font title: Desktop.scaled(Desktop.font, 1.69, Font.Bold)
    readonly property font roundedTitle: Desktop.rounded(title)
    readonly property font title2: Desktop.scaled(Desktop.font, 1.31, Font.DemiBold)
    readonly property font boldTitle2: Desktop.scaled(Desktop.font, 1.31, Font.Bold)
    readonly property font headline: Desktop.scaled(Desktop.font, 1, Font.Bold)
    readonly property font subheadline: Desktop.scaled(Desktop.font, 0.85, Font.Normal)
    readonly property font caption: Desktop.scaled(Desktop.font, 0.77, Font.Normal)
    readonly property font monospacedCaption: Desktop.monospaced(caption)
    readonly property font heading: Desktop.sized(Desktop.font, 24, Font.DemiBold)

    readonly property real padding: 16
    readonly property real spacing: 8

    // Sizes of symbols, as those of the text that they go with.
    readonly property real bodySymbol: 13
    readonly property real wideSymbol: 17 // of a drawing that is wider than high
    readonly property real buttonSymbol: 18
    readonly property real zoneSymbol: 24
    readonly property real headerSymbol: 24 * 1.3
    readonly property real badgeSymbol: 40

    readonly property var dashes: [5, 5]

    readonly property var easeInOut: [0.42, 0, 0.58, 1, 1, 1]
    readonly property var easeOut: [0, 0, 0.58, 1, 1, 1]
    readonly property real standardSeconds: 0.35

    function mixed(from: color, to: color, amount: real): color {
        const share = Math.max(0, Math.min(amount, 1));
        const part = (a, b) => a + (b - a) * share;
        return Qt.rgba(part(from.r, to.r), part(from.g, to.g), part(from.b, to.b), part(from.a, to.a));
    }

    function faded(base: color, opacity: real): color {
        return Qt.rgba(base.r, base.g, base.b, base.a * opacity);
    }
}
