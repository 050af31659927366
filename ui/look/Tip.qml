import QtQuick

// Explains the control that it lies in. There is nothing of it until it is shown, which most never are.
Loader {
    required property string text
    required property bool shown

    anchors.fill: parent
    active: shown
    source: Qt.resolvedUrl("TipBubble.qml") // beside this file, not beside the control
}
