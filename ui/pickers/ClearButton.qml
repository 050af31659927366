import QtQuick
import Tessary

PlainButton {
    id: button

    required property FileSlot slot
    property color symbolColor: Look.labelColor

    objectName: "clearButton"
    text: qsTr("Remove %1").arg(slot.name)
    padding: 4
    ringRadius: 8
    contentItem: Symbol {
        name: "xmark.circle.fill"
        color: button.symbolColor
        fontSize: Look.bodySymbol
    }
    onClicked: slot.clear()
}
