pragma ComponentBehavior: Bound
import QtQuick
import Tessary.Look

// Eight spokes, the brightest of which goes round once a second.
Item {
    id: indicator

    property color tint: Look.labelColor
    property int step
    readonly property int spokes: 8

    implicitWidth: 16
    implicitHeight: 16

    // An animation would draw sixty frames a second to show eight.
    Timer {
        objectName: "turning"
        interval: 1000 / indicator.spokes
        repeat: true
        running: indicator.visible && Look.animations
        onTriggered: indicator.step = (indicator.step + 1) % indicator.spokes
    }

    Repeater {
        model: indicator.spokes

        Item {
            id: spoke

            required property int index

            anchors.fill: parent
            rotation: index * 360 / indicator.spokes
            opacity: 1 - 0.75 * ((indicator.step - index + indicator.spokes) % indicator.spokes) / (indicator.spokes - 1)

            Rectangle {
                anchors.horizontalCenter: parent.horizontalCenter
                width: parent.width / 8
                height: parent.height * 0.28
                radius: width / 2
                antialiasing: true
                color: indicator.tint
            }
        }
    }
}
