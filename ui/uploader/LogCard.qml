import QtQuick
import Tessary
import Tessary.Look

// How the upload is doing: the status row over the log, or over a note that the log is hidden.
Item {
    id: card

    required property FileUploaderState uploader

    signal focusLeft(visibly: bool)

    objectName: "logCard"

    EaseValue {
        id: details

        animated: Look.animations
        goal: card.uploader.showDetails ? 1 : 0
    }

    Card {
        anchors.fill: parent
    }

    StatusRow {
        id: status

        x: Look.padding
        y: Look.padding + lineHeight - height // what it is higher at times, it is upwards
        z: 1 // the rings around its buttons lie over the log
        width: Math.min(implicitWidth, area.width)
        uploader: card.uploader
        onFocusLeft: visibly => card.focusLeft(visibly)
    }

    Item {
        id: area

        anchors.top: status.bottom
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Look.padding
        x: Look.padding
        width: card.width - 2 * Look.padding

        Loader {
            anchors.fill: parent
            opacity: 1 - details.value
            active: opacity > 0
            // The loader makes this in the file's context, which the linter does not know.
            // qmllint disable unqualified
            sourceComponent: Squircle {
                radius: 12
                fill: Look.faded(Look.textBackgroundColor, 0.5)

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
            // qmllint enable unqualified
        }

        Item {
            objectName: "log"
            anchors.fill: parent
            enabled: card.uploader.showDetails
            opacity: details.value
            visible: opacity > 0

            Squircle {
                anchors.fill: parent
                radius: 12
                fill: Look.textBackgroundColor
                outline: Look.plainOutlineColor
                lineWidth: 1
                lineInside: true
            }

            // Empty at first, so there is nothing of it in the first frame, which need not wait for it.
            Loader {
                id: log

                function make() {
                    setSource("LogView.qml", {
                        uploader: card.uploader
                    });
                }

                anchors.fill: parent
            }

            Connections {
                function onFrameSwapped() {
                    frameShown.start();
                }

                target: card.Window.window
                enabled: log.status === Loader.Null
            }

            Timer {
                id: frameShown

                interval: 0
                onTriggered: log.make()
            }
        }
    }
}
