import QtQuick
import Tessary
import Tessary.Look

// What is to be uploaded, and the button that uploads it. Disabled as a whole while that goes on.
Item {
    id: card

    required property FileUploaderState uploader

    function focusUploadButton(visibly: bool) {
        uploadButton.takeFocus(visibly);
    }

    objectName: "formCard"

    Card {
        anchors.fill: parent
    }

    ScrollArea {
        id: area

        anchors.fill: parent
        contentHeight: form.height + 2 * Look.padding

        Column {
            id: form

            x: Look.padding
            y: Look.padding
            width: area.width - 2 * Look.padding
            enabled: !card.uploader.isUploading
            bottomPadding: 20

            FileArea {
                width: form.width
                uploader: card.uploader
            }

            Reveal {
                width: form.width
                shown: card.uploader.showDetails
                slides: true
                response: 0.4
                gap: 20

                VideoInformation {
                    width: form.width
                    uploader: card.uploader
                }
            }

            Item {
                width: 1
                height: 20
            }

            UploadButton {
                id: uploadButton

                width: form.width
                uploader: card.uploader
            }
        }
    }

    SecondPressGuard {
        anchors.fill: area
        form: form
    }
}
