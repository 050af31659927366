import QtQuick
import Tessary.Look

// One line of text. Where there is no room for all of it, the pointer on it brings up the rest.
StyledText {
    id: line

    elide: Text.ElideRight
    maximumLineCount: 1
    clip: contentWidth > width // joined letters may come out wider than what was counted with

    HoverHandler {
        id: pointer

        enabled: line.truncated
    }

    Tip {
        text: line.text
        shown: pointer.hovered && line.truncated
    }
}
