import QtQuick
import Tessary.Look

// What every button shows on top of its own look: pressed, under the keyboard's focus, and explained while the pointer
// rests on it.
Item {
    id: marks

    readonly property ControlStates room: parent as ControlStates // which is the first thing that it gets

    Loader {
        anchors.fill: parent
        active: marks.room.control.down
        // The loader makes this in the file's context, which the linter does not know.
        // qmllint disable unqualified
        sourceComponent: Squircle {
            radius: marks.room.radius
            fill: Look.pressedColor
        }
        // qmllint enable unqualified
    }

    FocusRing {
        shown: marks.room.control.visualFocus
        radius: marks.room.radius
    }

    Tip {
        text: marks.room.tip
        shown: marks.room.control.hovered && marks.room.tip !== ""
    }
}
