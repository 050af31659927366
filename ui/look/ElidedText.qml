import QtQuick
import Tessary.Look

// One line of text. Where there is no room for all of it, the pointer on it brings up the rest.
StyledText {
    id: line

    elide: Text.ElideRight
    maximumLineCount: 1
    clip: contentWidth > width // joined letters may come out wider than what was counted with

    Loader {
        anchors.fill: parent
        active: line.truncated
        // The loader makes this in the file's context, which the linter does not know.
        // qmllint disable unqualified
        sourceComponent: Item {
            HoverHandler {
                id: pointer
            }

            Tip {
                text: line.text
                shown: pointer.hovered
            }
        }
        // qmllint enable unqualified
    }
}
