import QtQuick
import Tessary

// The dimmed screen with the card that grows in and shrinks away.
Item {
    id: notice

    required property bool shown
    property bool entered: false
    readonly property alias amount: spring.value

    signal appeared

    objectName: "successOverlay"
    Accessible.role: Accessible.AlertMessage
    Accessible.name: title.text

    SpringValue {
        id: spring

        goal: notice.entered && notice.shown ? 1 : 0
        response: 0.6
    }

    Timer {
        interval: 0
        running: notice.shown
        onTriggered: {
            notice.entered = true;
            notice.appeared();
        }
    }

    Rectangle {
        anchors.fill: parent
        color: Look.faded(Look.black, 0.3)
    }

    MouseArea {
        anchors.fill: parent
        enabled: notice.shown
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
        onWheel: wheel => wheel.accepted = true
    }

    Item {
        anchors.centerIn: parent
        width: content.width + 80
        height: content.height + 80
        scale: 0.8 + 0.2 * notice.amount

        BlurredShadow {
            anchors.fill: parent
            radius: surface.radius
            blur: 20
            offset: Qt.point(0, 10)
            color: Look.faded(Look.black, 0.3)
        }

        Squircle {
            id: surface

            anchors.fill: parent
            radius: 20
            fill: Look.faded(Look.noticeColor, 0.9)
        }

        Column {
            id: content

            x: 40
            y: 40
            spacing: Look.spacing

            Rectangle {
                anchors.horizontalCenter: parent.horizontalCenter
                width: 80
                height: 80
                radius: 40
                antialiasing: true
                color: Look.systemGreenColor
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
