import QtQuick
import Tessary.Look

// A button of one symbol, as large as a finger or an unsteady hand needs it. It may overlap what lies around by what it
// is larger than its symbol.
PlainButton {
    id: button

    required property string symbol
    property color symbolColor: Look.labelColor
    property real symbolSize: Look.bodySymbol
    readonly property real overlap: padding

    padding: Math.max(4, Math.ceil((24 - implicitContentWidth) / 2))
    contentItem: Symbol {
        name: button.symbol
        color: button.symbolColor
        fontSize: button.symbolSize
    }
}
