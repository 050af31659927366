import QtQuick
import Tessary
import Tessary.Look

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
    background: Panel {
        radius: button.ringRadius
        fill: button.uploader.isUploading ? Look.systemGrayColor : Look.systemBlueColor
        lineWidth: 0
        blur: 5
        offset: Qt.point(0, 3)
        shadowColor: Look.faded(Look.shadowColor, 0.3)
    }
}
