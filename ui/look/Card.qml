import QtQuick
import Tessary

Item {
    BlurredShadow {
        anchors.fill: parent
        radius: surface.radius
        blur: 10
        offset: Qt.point(0, 5)
        color: Look.faded(Look.shadowColor, 0.1)
    }

    Squircle {
        id: surface

        anchors.fill: parent
        radius: 16
        fill: Look.controlBackgroundColor
    }
}
