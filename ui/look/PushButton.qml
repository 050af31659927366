import QtQuick
import Tessary.Look

// A large button with a frame; a prominent one is filled with the accent colour.
PlainButton {
    id: button

    property bool prominent: false
    property color textColor: prominent ? Look.accentTextColor : Look.labelColor

    topPadding: 8
    bottomPadding: 8
    leftPadding: Look.padding
    rightPadding: Look.padding

    contentItem: StyledText {
        text: button.text
        color: button.textColor
        opacity: button.enabled ? 1 : 0.6
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    background: Squircle {
        radius: button.ringRadius
        fill: button.prominent ? Look.accentColor : Look.faded(Look.labelColor, 0.08)
        outline: button.prominent ? Look.transparent : Look.outlineColor
        lineWidth: button.prominent ? 0 : 1
        opacity: button.enabled ? 1 : 0.45
    }
}
