import QtQuick
import QtQuick.Layouts
import Tessary
import Tessary.Look

// The drop zone for the one file of an upload. Once it holds a file it only shows and clears it.
FileZone {
    id: picker

    readonly property bool filled: slot.filled
    readonly property string prompt: qsTr("Drop your file here or click to browse")

    objectName: "filePicker"
    implicitWidth: filled ? selectedRow.implicitWidth + 2 * Look.padding : emptyZone.implicitWidth
    implicitHeight: filled ? selectedRow.implicitHeight + 2 * Look.padding : emptyZone.height
    place: FileSlot.SingleFile
    open: !filled
    radius: 12
    fill: Look.textBackgroundColor

    PlainButton {
        id: emptyZone

        width: Math.min(implicitWidth, picker.width)
        height: 80
        visible: !picker.filled
        padding: Look.padding
        ringRadius: picker.radius
        text: qsTr("Choose a file")
        explanation: picker.slot.problem || picker.prompt
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
        onClicked: picker.browse()
    }

    Later {
        id: selectedRow

        anchors.fill: parent
        anchors.margins: Look.padding
        shown: picker.filled
        // The loader makes this in the file's context, which the linter does not know.
        // qmllint disable unqualified
        sourceComponent: RowLayout {
            spacing: Look.spacing

            Symbol {
                name: "doc.fill"
                color: Look.systemBlueColor
                fontSize: Look.bodySymbol
            }

            ColumnLayout {
                spacing: Look.spacing / 2

                ElidedText {
                    Layout.fillWidth: true
                    text: picker.slot.name
                    font: Look.headline
                    elide: Text.ElideMiddle
                }

                ElidedText {
                    Layout.fillWidth: true
                    text: picker.slot.kind
                    font: Look.caption
                    color: Look.secondaryLabelColor
                }
            }

            ClearButton {
                Layout.margins: -overlap
                slot: picker.slot
                symbolColor: Look.tertiaryLabelColor
            }
        }
        // qmllint enable unqualified
    }
}
