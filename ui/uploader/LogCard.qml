import QtQuick
import Tessary
import Tessary.Look

// How the upload is doing: the status row over the log, or over a note that the log is hidden.
Item {
    id: card

    required property FileUploaderState uploader

    signal focusLeft(visibly: bool)

    objectName: "logCard"

    Card {
        anchors.fill: parent
    }

    StatusRow {
        id: status

        x: Look.padding
        y: Look.padding
        width: card.width - 2 * Look.padding
        uploader: card.uploader
        onFocusLeft: visibly => card.focusLeft(visibly)
    }

    Item {
        id: area

        anchors.top: status.bottom
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Look.padding
        x: Look.padding
        width: status.width

        Squircle {
            anchors.fill: parent
            radius: 12
            fill: Look.faded(Look.textBackgroundColor, 0.5)
            opacity: card.uploader.showDetails ? 0 : 1
            visible: opacity > 0

            Behavior on opacity {
                EaseMotion {}
            }

            StyledText {
                anchors.fill: parent
                anchors.margins: Look.padding
                text: qsTr("Log details hidden")
                color: Look.secondaryLabelColor
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                wrapMode: Text.Wrap
            }
        }

        LogView {
            anchors.fill: parent
            uploader: card.uploader
            enabled: card.uploader.showDetails
            opacity: card.uploader.showDetails ? 1 : 0
            visible: opacity > 0

            Behavior on opacity {
                EaseMotion {}
            }
        }
    }
}
