import QtQuick
import Tessary

NumberAnimation {
    property real seconds: Look.standardSeconds

    duration: seconds * 1000
    easing.type: Easing.BezierSpline
    easing.bezierCurve: Look.easeOut
}
