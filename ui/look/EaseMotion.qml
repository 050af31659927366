import QtQuick
import Tessary.Look

// A change that eases in and out, or only out; the standard one unless told how long.
NumberAnimation {
    property real seconds: Look.standardSeconds
    property bool onlyOut: false

    duration: Look.animations ? seconds * 1000 : 0
    easing.type: Easing.BezierSpline
    easing.bezierCurve: onlyOut ? Look.easeOut : Look.easeInOut
}
