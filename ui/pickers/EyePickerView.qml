import QtQuick
import QtQuick.Layouts
import Tessary

// The captioned drop zone for one eye's file. It takes drops whether or not it holds a file, and says nothing on
// the status line.
Column {
    id: picker

    required property string label
    required property FileUploaderState uploader
    required property int place
    property bool isHovered: false
    property string zoneName

    spacing: 6

    FileSlot {
        id: fileSlot

        state: picker.uploader
        place: picker.place
    }

    OpenFileDialog {
        id: dialog

        slot: fileSlot
    }

    StyledText {
        width: picker.width
        text: picker.label
        font: Look.subheadline
        color: Look.secondaryLabelColor
        elide: Text.ElideRight
    }

    Item {
        objectName: picker.zoneName
        width: picker.width
        height: fileSlot.filled ? selectedRow.implicitHeight + 2 * Look.padding : emptyZone.implicitHeight

        HoverHandler {
            onHoveredChanged: picker.isHovered = hovered
        }

        FileDropArea {
            anchors.fill: parent
            slot: fileSlot
            onHoverChanged: hovered => picker.isHovered = hovered
        }

        PlainButton {
            id: emptyZone

            anchors.fill: parent
            visible: !fileSlot.filled
            implicitHeight: Math.max(60, implicitContentHeight)
            text: qsTr("%1: choose a file").arg(picker.label)
            contentItem: StyledText {
                text: qsTr("Drop or click to browse")
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                elide: Text.ElideRight
                Accessible.ignored: true
            }
            background: Squircle {
                radius: 8
                fill: Look.textBackgroundColor
            }
            onClicked: dialog.open()
        }

        RowLayout {
            id: selectedRow

            anchors.fill: parent
            anchors.margins: Look.padding
            visible: fileSlot.filled
            spacing: Look.spacing

            Symbol {
                name: "doc.fill"
                color: Look.labelColor
                fontSize: Look.bodySymbol
            }

            StyledText {
                Layout.fillWidth: true
                text: fileSlot.name
                maximumLineCount: 1
                elide: Text.ElideMiddle
            }

            ClearButton {
                Layout.margins: -4
                slot: fileSlot
            }
        }

        Squircle {
            anchors.fill: parent
            radius: 8
            outline: picker.isHovered ? Look.systemBlueColor : Look.separatorColor
            lineWidth: 2
            dashes: picker.isHovered ? [] : Look.dashes
        }
    }
}
