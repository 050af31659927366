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

    // Up and down in 0.6 s each, for hours: in steps along the curve that the eye does not see, since an animation would
    // draw sixty frames a second.
    Timer {
        readonly property int stepsUp: 600 / interval
        property int step

        interval: Look.beat
        repeat: true
        running: dot.busy && Look.animations && dot.exposed
        onRunningChanged: step = 0
        onTriggered: {
            step = (step + 1) % (2 * stepsUp);
            const amount = Look.eased(Math.min(step, 2 * stepsUp - step) / stepsUp);
            dot.opacity = dot.calmOpacity + (1 - dot.calmOpacity) * amount;
        }
    }

    EaseMotion {
        target: dot
        property: "opacity"
        to: dot.calmOpacity
        running: !dot.busy || !Look.animations
    }
}
