import QtQuick
import Tessary
import Tessary.Look

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

    TextField {
        id: input

        objectName: "keyField"
        width: group.width
        topPadding: 8
        bottomPadding: 8
        leftPadding: 12
        rightPadding: 12
        text: group.form.apiKey
        fill: Look.faded(Look.labelColor, 0.1 / Look.labelColor.a)
        outline: Look.plainOutlineColor
        inputMethodHints: Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase | Qt.ImhSensitiveData
        Accessible.name: qsTr("API Key")
        onTextEdited: group.form.apiKey = text
    }
}
