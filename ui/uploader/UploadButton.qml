import QtQuick
import Tessary
import Tessary.Look

PlainButton {
    id: button

    required property FileUploaderState uploader

    /// From a control that has gone by itself. The keys that were aimed at that one press nothing here.
    function takeFocus(visibly: bool) {
        if (visibly)
            forceActiveFocus(Qt.TabFocusReason);
        else
            focus = true; // which a question over the screen may not lose
        strayKeys.expected = true;
        strayTime.restart();
    }

    objectName: "uploadButton"
    padding: Look.padding
    ringRadius: 12
    enabled: uploader.inputsReady && !uploader.isUploading
    opacity: uploader.inputsReady ? 1 : 0.7
    text: uploader.isUploading ? qsTr("Uploading...") : qsTr("Upload")
    onClicked: uploader.startUpload()
    Keys.forwardTo: [strayKeys]

    Timer {
        id: strayTime

        interval: Look.reactionTime
    }

    // A key that went down before is let go after, however late.
    Item {
        id: strayKeys

        property bool expected: false

        function take(event: var) {
            event.accepted = expected && [Qt.Key_Space, Qt.Key_Return, Qt.Key_Enter].includes(event.key);
        }

        Keys.onPressed: event => {
            expected = expected && (strayTime.running || event.isAutoRepeat);
            take(event);
        }
        Keys.onReleased: event => take(event)
    }

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
