import QtQuick
import QtQuick.Layouts
import Tessary
import Tessary.Look

RowLayout {
    id: row

    required property FileUploaderState uploader
    /// Of the row without what is there after a failure only.
    readonly property real lineHeight: Math.max(line.implicitHeight, cancel.implicitHeight - 2 * cancel.overlap)

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
        id: line

        objectName: "statusLine"
        Layout.fillWidth: true
        Layout.preferredWidth: Math.ceil(implicitWidth)
        Layout.preferredHeight: row.lineHeight
        text: row.uploader.statusMessage
        font: Look.subheadline
        color: Look.secondaryLabelColor
        verticalAlignment: Text.AlignVCenter
    }

    Later {
        shown: !row.uploader.isUploading && row.uploader.failureReport !== null
        // A target of a finger's size; only what is seen of it, and a little distance, count for the row's height.
        Layout.topMargin: -2
        Layout.bottomMargin: -2
        // The loader makes this in the file's context, which the linter does not know.
        // qmllint disable unqualified
        sourceComponent: PlainButton {
            id: why

            objectName: "whyButton"
            text: qsTr("Why?")
            explanation: qsTr("Tells why the upload failed")
            tip: explanation
            topPadding: 6
            bottomPadding: 6
            topInset: 4
            bottomInset: 4
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
        // qmllint enable unqualified
    }

    Later {
        shown: row.uploader.isUploading
        // qmllint disable unqualified
        sourceComponent: UploadProgress {
            progress: row.uploader.progress
            words: row.uploader.progressInWords
        }
        // qmllint enable unqualified
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
