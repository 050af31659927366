import QtQuick
import Tessary.Look

// Eight spokes, the brightest of which goes round in 1.2 s.
SpokeWheel {
    id: indicator

    readonly property bool exposed: InView.exposed

    implicitWidth: 16
    implicitHeight: 16
    tint: Look.labelColor

    // An animation would draw sixty frames a second to show eight.
    Timer {
        objectName: "turning"
        interval: Look.beat
        repeat: true
        running: indicator.visible && Look.animations && indicator.exposed
        onTriggered: indicator.step = (indicator.step + 1) % indicator.spokes
    }
}
