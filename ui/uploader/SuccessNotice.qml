import QtQuick
import Tessary.Look

// The dimmed screen with the card that grows in and shrinks away.
Item {
    id: notice

    readonly property SuccessOverlay overlay: parent as SuccessOverlay // which is the first thing that it gets
    readonly property bool shown: overlay.shown
    property bool entered: false
    readonly property real amount: spring.value * stay
    property real stay: shown ? 1 : 0 ///< it comes on a spring and goes as the whole overlay does

    objectName: "successOverlay"
    Accessible.role: Accessible.AlertMessage
    Accessible.name: title.text

    SpringValue {
        id: spring

        animated: Look.animations
        goal: notice.entered ? 1 : 0
        response: 0.6
    }

    Behavior on stay {
        EaseMotion {}
    }

    Timer {
        interval: 0
        running: notice.shown
        onTriggered: {
            notice.entered = true;
            notice.overlay.uploader.showSuccess();
        }
    }

    Scrim {
        anchors.fill: parent
    }

    Panel {
        anchors.centerIn: parent
        width: content.width + 80
        height: content.height + 80
        objectName: "successCard"
        scale: 0.8 + 0.2 * notice.amount
        radius: 20
        fill: Look.faded(Look.noticeColor, 0.9)
        blur: 20
        offset: Qt.point(0, 10)
        shadowColor: Look.faded(Look.black, 0.3)

        Column {
            id: content

            x: 40
            y: 40
            spacing: Look.spacing

            Squircle {
                anchors.horizontalCenter: parent.horizontalCenter
                width: 80
                height: 80
                radius: 40
                fill: Look.systemGreenColor
                objectName: "successBadge"
                scale: 0.5 + 0.5 * notice.amount
                opacity: notice.amount

                Symbol {
                    anchors.centerIn: parent
                    name: "checkmark"
                    color: Look.white
                    fontSize: Look.badgeSymbol
                }
            }

            StyledText {
                id: title

                anchors.horizontalCenter: parent.horizontalCenter
                topPadding: Look.padding
                text: qsTr("Upload Complete!")
                font: Look.boldTitle2
                color: Look.white
                opacity: notice.amount
                Accessible.ignored: true
            }
        }
    }
}
