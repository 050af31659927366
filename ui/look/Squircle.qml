import QtQuick
import Tessary

// A rounded rectangle with continuous corners. Its outline lies on the edge and so reaches out of it.
Item {
    id: squircle

    property alias radius: painter.radius
    property alias fill: painter.fill
    property alias outline: painter.outline
    property real lineWidth: 0
    property alias dashes: painter.dashes

    SquirclePainter {
        id: painter

        anchors.fill: parent
        anchors.margins: -margin
        margin: Math.ceil(squircle.lineWidth)
        lineWidth: squircle.lineWidth
    }
}
