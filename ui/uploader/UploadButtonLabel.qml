import QtQuick
import Tessary.Look

// An arrow, or the sign that something goes on, before the text.
Item {
    id: label

    required property string text
    required property bool busy

    implicitWidth: row.implicitWidth
    implicitHeight: row.implicitHeight

    Row {
        id: row

        anchors.centerIn: parent
        spacing: Look.spacing

        Item {
            anchors.verticalCenter: parent.verticalCenter
            width: arrow.width + 5
            height: arrow.height

            Symbol {
                id: arrow

                visible: !label.busy
                name: "arrow.up.circle.fill"
                color: Look.alternateSelectedControlTextColor
                fontSize: Look.buttonSymbol
            }

            Later {
                anchors.centerIn: arrow
                shown: label.busy
                sourceComponent: ActivityIndicator {
                    width: 0.8 * implicitWidth
                    height: 0.8 * implicitHeight
                    tint: Look.alternateSelectedControlTextColor
                }
            }
        }

        StyledText {
            anchors.verticalCenter: parent.verticalCenter
            text: label.text
            font: Look.headline
            color: Look.alternateSelectedControlTextColor
            Accessible.ignored: true
        }
    }
}
