import QtQuick
import QtQuick.Layouts
import Tessary

RowLayout {
    id: row

    required property FileUploaderState uploader

    spacing: Look.spacing

    StateDot {
        busy: row.uploader.isUploading
    }

    StyledText {
        objectName: "statusLine"
        Layout.fillWidth: true
        Layout.preferredHeight: Math.max(implicitHeight, cancel.implicitHeight)
        text: row.uploader.statusMessage
        font: Look.subheadline
        color: Look.secondaryLabelColor
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        maximumLineCount: 1
    }

    UploadProgress {
        visible: row.uploader.isUploading
        progress: row.uploader.progress
    }

    PlainButton {
        id: cancel

        objectName: "cancelUploadButton"
        visible: row.uploader.isUploading
        leftPadding: 5
        ringRadius: 8
        text: qsTr("Cancel upload")
        contentItem: Symbol {
            name: "xmark.circle.fill"
            color: Look.systemRedColor
            fontSize: Look.bodySymbol
        }
        onClicked: row.uploader.cancelUpload()
    }
}
