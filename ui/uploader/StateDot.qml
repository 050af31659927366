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

    SequentialAnimation {
        running: dot.busy
        loops: Animation.Infinite

        EaseMotion {
            target: dot
            property: "opacity"
            to: 1
            seconds: 0.6
        }

        EaseMotion {
            target: dot
            property: "opacity"
            to: dot.calmOpacity
            seconds: 0.6
        }
    }

    EaseMotion {
        target: dot
        property: "opacity"
        to: dot.calmOpacity
        running: !dot.busy
    }
}
