import QtQuick
import Tessary.Look

// Dims what lies behind it and keeps the pointer from it.
Rectangle {
    color: Look.faded(Look.black, 0.3)

    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
        onWheel: wheel => wheel.accepted = true
    }
}
