import QtQuick
import QtQuick.Layouts
import Tessary
import Tessary.Look

// The captioned drop zone for one eye's file. It takes drops whether or not it holds a file, and says nothing on
// the status line.
Column {
    id: picker

    required property string label
    required property FileUploaderState uploader
    required property int place
    property string zoneName

    readonly property bool filled: zone.slot.filled

    function browse() {
        zone.browse();
    }

    spacing: 6

    Caption {
        width: picker.width
        text: picker.label
    }

    FileZone {
        id: zone

        objectName: picker.zoneName
        width: picker.width
        height: slot.filled ? selectedRow.implicitHeight + 2 * Look.padding : emptyZone.implicitHeight
        uploader: picker.uploader
        place: picker.place
        radius: 8
        fill: slot.filled ? Look.transparent : Look.textBackgroundColor

        PlainButton {
            id: emptyZone

            anchors.fill: parent
            visible: !zone.slot.filled
            implicitHeight: Math.max(60, implicitContentHeight)
            text: qsTr("%1: choose a file").arg(picker.label)
            explanation: zone.slot.problem
            contentItem: StyledText {
                text: qsTr("Drop or click to browse")
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                elide: Text.ElideRight
                Accessible.ignored: true
            }
            onClicked: zone.browse()
        }

        RowLayout {
            id: selectedRow

            anchors.fill: parent
            anchors.margins: Look.padding
            visible: zone.slot.filled
            spacing: Look.spacing

            Symbol {
                name: "doc.fill"
                color: Look.labelColor
                fontSize: Look.bodySymbol
            }

            ElidedText {
                Layout.fillWidth: true
                text: zone.slot.name
                elide: Text.ElideMiddle
            }

            ClearButton {
                Layout.margins: -overlap
                slot: zone.slot
            }
        }
    }
}
