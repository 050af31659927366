import QtQuick
import QtQuick.Templates as T

// Room for what a button shows on top of its own look. At rest there is nothing of it, and nothing of it is read.
Loader {
    id: states

    required property T.AbstractButton control
    property real radius: 8
    property string tip

    anchors.fill: parent
    z: 1
    active: control.down || control.hovered || control.visualFocus
    source: Qt.resolvedUrl("ControlMarks.qml") // beside this file, not beside the button
}
