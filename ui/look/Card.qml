import QtQuick
import Tessary.Look

Panel {
    fill: Look.controlBackgroundColor
    blur: 10
    offset: Qt.point(0, 5)
    shadowColor: Look.faded(Look.shadowColor, 0.1)
}
