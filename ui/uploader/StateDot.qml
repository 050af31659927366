import QtQuick
import Tessary

// Green and calm, or blue and pulsing.
Rectangle {
    id: dot

    required property bool busy
    readonly property real calmOpacity: 0.8

    implicitWidth: 8
    implicitHeight: 8
    radius: 4
    antialiasing: true
    color: busy ? Look.systemBlueColor : Look.systemGreenColor
    opacity: calmOpacity
    Accessible.ignored: true

    // Up and down in 0.6 s each, for hours: in steps that the eye does not see, since an animation would draw sixty
    // frames a second.
    Timer {
        property int step

        interval: 100
        repeat: true
        running: dot.busy
        onRunningChanged: step = 0
        onTriggered: {
            step = (step + 1) % 12;
            dot.opacity = dot.calmOpacity + (1 - dot.calmOpacity) * (1 - Math.cos(step * Math.PI / 6)) / 2;
        }
    }

    EaseMotion {
        target: dot
        property: "opacity"
        to: dot.calmOpacity
        running: !dot.busy
    }
}
