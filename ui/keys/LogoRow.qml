import QtQuick
import Tessary.Look

// The logo grows in and the name slides in from above once `shown`; the logo leaves at once, the name as it came.
Row {
    id: row

    required property bool shown
    readonly property alias amount: spring.value

    height: logo.height
    spacing: 8

    SpringValue {
        id: spring

        animated: Look.animations
        goal: row.shown ? 1 : 0
        response: 0.5
        dampingFraction: 0.6
    }

    Symbol {
        id: logo

        width: 50
        height: 50
        name: "tessarylogo"
        color: Look.accentColor
        visible: row.shown
        opacity: Math.min(row.amount, 1)
        scale: Math.max(row.amount, 0)
    }

    StyledText {
        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: (row.amount - 1) * height
        text: "Tessary"
        font: Look.roundedTitle
        opacity: Math.min(row.amount, 1)
    }
}
