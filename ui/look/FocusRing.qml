import QtQuick
import Tessary.Look

// Drawn around a control that has the keyboard's focus. There is nothing of it until it is shown.
Loader {
    id: ring

    property bool shown
    property real radius: 8 ///< the control's own
    property bool inside: false ///< where there is no room around the control
    readonly property real distance: inside ? -3 : 3 ///< of the line's middle from the control

    anchors.fill: parent
    anchors.margins: -distance
    z: 1
    active: shown
    // The loader makes this in the file's context, which the linter does not know.
    // qmllint disable unqualified
    sourceComponent: Squircle {
        radius: ring.radius + ring.distance
        outline: Look.accentColor
        lineWidth: 2
    }
    // qmllint enable unqualified
}
