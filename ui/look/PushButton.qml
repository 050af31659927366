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
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    background: Squircle {
        radius: button.ringRadius
        fill: !button.prominent ? Look.faded(Look.labelColor, 0.08) : button.enabled ? Look.accentColor : Look.disabledAccentColor
        outline: button.prominent ? Look.transparent : Look.outlineColor
        lineWidth: button.prominent ? 0 : 1
    }
}
