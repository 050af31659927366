import QtQuick
import Tessary

// Drawn around a control that the keyboard brought the focus to.
Squircle {
    anchors.fill: parent
    anchors.margins: -2
    z: 1
    radius: 10
    outline: Look.faded(Look.accentColor, 0.6)
    lineWidth: 3
}
