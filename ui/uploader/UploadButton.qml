import QtQuick
import Tessary

PlainButton {
    id: button

    required property FileUploaderState uploader

    objectName: "uploadButton"
    padding: Look.padding
    ringRadius: 12
    enabled: uploader.inputsReady && !uploader.isUploading
    opacity: uploader.inputsReady ? 1 : 0.7
    text: uploader.isUploading ? qsTr("Uploading...") : qsTr("Upload")
    onClicked: uploader.startUpload()

    contentItem: UploadButtonLabel {
        text: button.text
        busy: button.uploader.isUploading
    }
    background: Item {
        BlurredShadow {
            anchors.fill: parent
            radius: button.ringRadius
            blur: 5
            offset: Qt.point(0, 3)
            color: Look.faded(Look.shadowColor, 0.3)
        }

        Squircle {
            anchors.fill: parent
            radius: button.ringRadius
            fill: button.uploader.isUploading ? Look.systemGrayColor : Look.systemBlueColor
        }

        Squircle {
            anchors.fill: parent
            visible: button.down
            radius: button.ringRadius
            fill: Look.faded(Look.black, 0.12)
        }
    }
}
