import QtQuick
import Tessary.Look

// A panel over the whole window, with room for what stands in it. Escape is the way out.
FocusScope {
    id: sheet

    property real contentWidth ///< less where the window is narrower
    property alias spacing: column.spacing
    default property alias content: column.data

    signal dismissed

    anchors.fill: parent
    z: 10
    focus: true
    Accessible.role: Accessible.Dialog
    Keys.onEscapePressed: dismissed()

    Scrim {
        anchors.fill: parent
    }

    Panel {
        objectName: "sheet"
        anchors.centerIn: parent
        width: column.width + 2 * column.x
        height: column.height + 2 * column.y
        outline: Look.separatorColor
        blur: 20
        offset: Qt.point(0, 10)
        shadowColor: Look.faded(Look.black, 0.3)

        Column {
            id: column

            x: 24
            y: 24
            width: Math.min(sheet.contentWidth, sheet.width - 2 * (x + Look.padding))
            spacing: Look.spacing
        }
    }
}
