import QtQuick
import Tessary

// A change that eases in and out; the standard one unless told how long.
NumberAnimation {
    property real seconds: Look.standardSeconds

    duration: seconds * 1000
    easing.type: Easing.BezierSpline
    easing.bezierCurve: Look.easeInOut
}
