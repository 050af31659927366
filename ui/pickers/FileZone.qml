import QtQuick
import Tessary
import Tessary.Look

// What all pickers share: the place of one file, the ways in for it, and the dashed border that answers the pointer and
// a drag.
Item {
    id: zone

    required property FileUploaderState uploader
    required property int place
    readonly property alias slot: fileSlot
    property bool isHovered: false
    property bool open: true ///< takes drops, and shows that with its border
    property alias radius: surface.radius
    property alias fill: surface.fill

    function browse() {
        dialog.open();
    }

    onIsHoveredChanged: {
        if (!isHovered)
            fileSlot.forgetProblem();
    }

    FileSlot {
        id: fileSlot

        state: zone.uploader
        place: zone.place
    }

    Loader {
        id: dialog

        function open() {
            if (!item)
                setSource("OpenFileDialog.qml", {
                    slot: fileSlot
                });
            (item as OpenFileDialog).open();
        }
    }

    Tip {
        objectName: "fileProblem"
        text: fileSlot.problem
        shown: text !== ""
    }

    HoverHandler {
        onHoveredChanged: zone.isHovered = hovered
    }

    FileDropArea {
        anchors.fill: parent
        enabled: zone.open
        slot: fileSlot
        onHoverChanged: hovered => zone.isHovered = hovered
    }

    Squircle {
        id: surface

        anchors.fill: parent
        outline: !zone.open ? Look.plainOutlineColor : zone.isHovered ? Look.systemBlueColor : Look.outlineColor
        lineWidth: zone.open ? 2 : 1
        dashes: zone.open && !zone.isHovered ? Look.dashes : []
    }
}
