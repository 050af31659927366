import QtQuick
import Tessary
import Tessary.Look

SymbolButton {
    id: button

    required property FileSlot slot

    objectName: "clearButton"
    text: qsTr("Remove %1").arg(slot.name)
    tip: text
    symbol: "xmark.circle.fill"
    onClicked: slot.clear()
}
