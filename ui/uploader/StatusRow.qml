import QtQuick
import QtQuick.Layouts
import Tessary
import Tessary.Look

RowLayout {
    id: row

    required property FileUploaderState uploader

    /// The button that had the focus has gone.
    /// @param visibly it was shown that it had it
    signal focusLeft(visibly: bool)

    spacing: Look.spacing

    Announcer {
        id: announcer

        parent: row.parent // a row would give it room
    }

    Connections {
        function onStatusMessageChanged() {
            announcer.say(row.uploader.statusMessage);
        }

        target: row.uploader
    }

    StateDot {
        busy: row.uploader.isUploading
    }

    ElidedText {
        objectName: "statusLine"
        Layout.fillWidth: true
        Layout.preferredHeight: Math.max(implicitHeight, cancel.implicitHeight - 2 * cancel.overlap)
        text: row.uploader.statusMessage
        font: Look.subheadline
        color: Look.secondaryLabelColor
        verticalAlignment: Text.AlignVCenter
    }

    PlainButton {
        id: why

        objectName: "whyButton"
        visible: !row.uploader.isUploading && row.uploader.failureReport !== null
        text: qsTr("Why?")
        explanation: qsTr("Tells why the upload failed")
        tip: explanation
        // A target of a finger's size; only what is seen of it counts for the row's height.
        Layout.topMargin: -topPadding
        Layout.bottomMargin: -bottomPadding
        topPadding: 5
        bottomPadding: 5
        topInset: 3
        bottomInset: 3
        leftPadding: Look.spacing
        rightPadding: Look.spacing
        contentItem: StyledText {
            text: why.text
            font: Look.subheadline
            Accessible.ignored: true
        }
        background: Squircle {
            radius: why.ringRadius
            outline: Look.outlineColor
            lineWidth: 1
        }
        onClicked: row.uploader.failureReport.shown = true
    }

    UploadProgress {
        visible: row.uploader.isUploading
        progress: row.uploader.progress
        words: row.uploader.progressInWords
    }

    SymbolButton {
        id: cancel

        objectName: "cancelUploadButton"
        visible: row.uploader.isUploading
        Layout.margins: -overlap
        Layout.leftMargin: 5 - overlap
        text: qsTr("Cancel upload")
        tip: text
        symbol: "xmark.circle.fill"
        symbolColor: Look.systemRedColor
        onClicked: row.uploader.cancelUpload()
        onVisibleChanged: {
            if (!visible && focus)
                row.focusLeft(visualFocus);
        }
    }
}
