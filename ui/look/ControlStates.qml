import QtQuick
import QtQuick.Templates as T
import Tessary.Look

// What every button shows on top of its own look: pressed, under the keyboard's focus, and explained while the pointer
// rests on it. There is nothing of it at rest.
Item {
    id: marks

    required property T.AbstractButton control
    property real radius: 8
    property string tip

    anchors.fill: parent
    z: 1

    Loader {
        anchors.fill: parent
        active: marks.control.down
        // The loader makes this in the file's context, which the linter does not know.
        // qmllint disable unqualified
        sourceComponent: Squircle {
            radius: marks.radius
            fill: Look.pressedColor
        }
        // qmllint enable unqualified
    }

    FocusRing {
        shown: marks.control.visualFocus
        radius: marks.radius
    }

    Tip {
        text: marks.tip
        shown: marks.control.hovered && marks.tip !== ""
    }
}
