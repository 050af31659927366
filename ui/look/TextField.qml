import QtQuick
import QtQuick.Templates as T
import Tessary.Look

// The one text field, on a squircle, with a ring while it has the keyboard.
T.TextField {
    id: field

    property color fill
    property color outline: Look.transparent
    readonly property real radius: 8

    implicitHeight: contentHeight + topPadding + bottomPadding
    font: Look.body
    color: Look.labelColor
    selectionColor: Look.selectedTextBackgroundColor
    selectedTextColor: Look.labelColor
    selectByMouse: true
    verticalAlignment: TextInput.AlignVCenter
    background: Squircle {
        radius: field.radius
        fill: field.fill
        outline: field.outline
        lineWidth: 1
    }

    FocusRing {
        shown: field.activeFocus
        radius: field.radius
    }
}
