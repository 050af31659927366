import QtQuick
import Tessary.Look

// A surface that stands out from what is behind it: a squircle and its shadow.
Item {
    property alias radius: surface.radius
    property alias fill: surface.fill
    property alias outline: surface.outline
    property alias lineWidth: surface.lineWidth
    property alias blur: shadow.blur
    property alias offset: shadow.offset
    property alias shadowColor: shadow.color

    BlurredShadow {
        id: shadow

        anchors.fill: parent
        radius: surface.radius
    }

    Squircle {
        id: surface

        anchors.fill: parent
        radius: 16
        fill: Look.windowBackgroundColor
        outline: Look.plainOutlineColor
        lineWidth: 1
    }
}
