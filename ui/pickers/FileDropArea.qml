import QtQuick
import Tessary

// The one way in for dragged files. Tells when a drag that could be dropped here comes and goes.
DropArea {
    id: area

    required property FileSlot slot

    signal hoverChanged(bool hovered)

    onEntered: drag => {
        drag.accepted = slot.welcomes(drag.urls);
        if (drag.accepted)
            hoverChanged(true);
    }
    onExited: hoverChanged(false)
    onDropped: drop => {
        hoverChanged(false);
        // A copy, whatever was proposed: the source of a move would remove its file.
        if (slot.acceptDrop(drop.urls))
            drop.accept(Qt.CopyAction);
        else
            drop.accepted = false;
    }
}
