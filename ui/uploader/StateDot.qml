import QtQuick
import Tessary.Look

// Green and calm, or blue and pulsing.
Squircle {
    id: dot

    required property bool busy
    readonly property bool exposed: InView.exposed
    readonly property real calmOpacity: 0.8

    objectName: "stateDot"
    implicitWidth: 8
    implicitHeight: 8
    radius: 4
    fill: busy ? Look.systemBlueColor : Look.systemGreenColor
    outline: busy ? Look.transparent : Look.greenEdgeColor
    lineWidth: 1
    lineInside: true
    opacity: calmOpacity
    Accessible.ignored: true

    // Up and down in 0.6 s each, for hours: in steps that the eye does not see, since an animation would draw sixty frames
    // a second.
    Timer {
        /// Between the calm one and 1, along the curve that eases in and out, at each quarter of the time.
        readonly property var levels: [0.8, 0.825832, 0.9, 0.974168, 1, 0.974168, 0.9, 0.825832]
        property int step

        objectName: "pulsing"
        interval: Look.beat
        repeat: true
        running: dot.busy && Look.animations && dot.exposed
        onRunningChanged: step = 0
        onTriggered: {
            step = (step + 1) % levels.length;
            dot.opacity = levels[step];
        }
    }

    EaseMotion {
        target: dot
        property: "opacity"
        to: dot.calmOpacity
        running: (!dot.busy || !Look.animations) && dot.opacity !== to // what runs asks for frames
    }
}
