import QtQuick
import QtQuick.Templates as T
import Tessary

Column {
    id: group

    required property KeyForm form
    readonly property alias field: input

    spacing: 4

    StyledText {
        text: qsTr("API Key")
        font: Look.caption
        color: Look.secondaryLabelColor
        Accessible.ignored: true
    }

    T.TextField {
        id: input

        objectName: "keyField"
        width: group.width
        implicitHeight: contentHeight + topPadding + bottomPadding
        topPadding: 8
        bottomPadding: 8
        leftPadding: 12
        rightPadding: 12
        text: group.form.apiKey
        font: Look.body
        color: Look.labelColor
        selectionColor: Look.selectedTextBackgroundColor
        selectedTextColor: Look.labelColor
        selectByMouse: true
        verticalAlignment: TextInput.AlignVCenter
        inputMethodHints: Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase | Qt.ImhSensitiveData
        Accessible.name: qsTr("API Key")
        background: Squircle {
            radius: 8
            fill: Look.faded(Look.labelColor, 0.1 / Look.labelColor.a)
        }
        onTextEdited: group.form.apiKey = text

        FocusRing {
            visible: input.activeFocus
            radius: 10
        }
    }
}
