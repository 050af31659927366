import QtQuick
import QtQuick.Layouts
import Tessary

// The drop zone for the one file of an upload. Once it holds a file it only shows and clears it.
Item {
    id: picker

    required property FileUploaderState uploader
    readonly property bool filled: fileSlot.filled
    readonly property string prompt: qsTr("Drop your file here or click to browse")
    property bool isHovered: false

    objectName: "filePicker"
    implicitWidth: fileSlot.filled ? selectedRow.implicitWidth + 2 * Look.padding : emptyZone.implicitWidth
    implicitHeight: fileSlot.filled ? selectedRow.implicitHeight + 2 * Look.padding : 80

    FileSlot {
        id: fileSlot

        state: picker.uploader
        place: FileSlot.SingleFile
    }

    OpenFileDialog {
        id: dialog

        slot: fileSlot
    }

    PlainButton {
        id: emptyZone

        width: Math.min(implicitWidth, picker.width)
        height: 80
        visible: !fileSlot.filled
        padding: Look.padding
        ringRadius: 12
        text: qsTr("Choose a file")
        explanation: picker.prompt
        contentItem: RowLayout {
            spacing: Look.spacing

            Symbol {
                name: "arrow.up.doc.fill"
                color: Look.systemBlueColor
                fontSize: Look.zoneSymbol
                opacity: picker.isHovered ? 1 : 0.8
            }

            StyledText {
                Layout.fillWidth: true
                text: picker.prompt
                color: Look.secondaryLabelColor
                wrapMode: Text.Wrap
                elide: Text.ElideRight
                maximumLineCount: 2
                Accessible.ignored: true
            }
        }
        background: Squircle {
            radius: 12
            fill: Look.textBackgroundColor
            outline: picker.isHovered ? Look.systemBlueColor : Look.separatorColor
            lineWidth: 2
            dashes: picker.isHovered ? [] : Look.dashes
        }
        onClicked: dialog.open()

        HoverHandler {
            // The zone that gives way to a chosen file was not left.
            onHoveredChanged: {
                if (!fileSlot.filled)
                    picker.isHovered = hovered;
            }
        }

        FileDropArea {
            anchors.fill: parent
            slot: fileSlot
            onHoverChanged: hovered => picker.isHovered = hovered
        }
    }

    Squircle {
        anchors.fill: parent
        visible: fileSlot.filled
        radius: 12
        fill: Look.textBackgroundColor

        RowLayout {
            id: selectedRow

            anchors.fill: parent
            anchors.margins: Look.padding
            spacing: Look.spacing

            Symbol {
                name: "doc.fill"
                color: Look.systemBlueColor
                fontSize: Look.bodySymbol
            }

            ColumnLayout {
                spacing: Look.spacing / 2

                StyledText {
                    Layout.fillWidth: true
                    text: fileSlot.name
                    font: Look.headline
                    maximumLineCount: 1
                    elide: Text.ElideMiddle
                }

                StyledText {
                    Layout.fillWidth: true
                    text: fileSlot.kind
                    font: Look.caption
                    color: Look.secondaryLabelColor
                    elide: Text.ElideRight
                }
            }

            ClearButton {
                Layout.margins: -4
                slot: fileSlot
                symbolColor: Look.tertiaryLabelColor
            }
        }
    }
}
