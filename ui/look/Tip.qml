import QtQuick
import Tessary.Look

// Explains the control that it lies in. There is nothing of it until it is shown, which most never are.
Loader {
    id: tip

    required property string text
    required property bool shown

    anchors.fill: parent
    active: shown
    // The loader makes this in the file's context, which the linter does not know.
    // qmllint disable unqualified
    sourceComponent: Item {
        HoverHandler {
            id: hover
        }

        TipBubble {
            text: tip.text
            pointer: hover.point.position
            visible: true
        }
    }
    // qmllint enable unqualified
}
