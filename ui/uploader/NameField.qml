import QtQuick
import Tessary
import Tessary.Look

TextField {
    id: field

    required property FileUploaderState uploader

    objectName: "nameField"
    padding: 10
    text: uploader.videoName
    color: shortened.active ? Look.transparent : Look.labelColor
    fill: Look.textBackgroundColor
    outline: Look.outlineColor
    Accessible.name: qsTr("Video Name")
    onTextEdited: uploader.videoName = text

    StyledText {
        anchors.fill: parent
        anchors.margins: 10
        text: qsTr("Enter video name")
        color: Look.placeholderTextColor
        opacity: field.uploader.videoName === "" ? 1 : 0
        visible: field.preeditText === "" // an input method composes in its place
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        Accessible.ignored: true
    }

    // A field that is not being edited shows the start of a name that is too long for it.
    Loader {
        id: shortened

        anchors.fill: parent
        anchors.margins: 10
        active: !field.activeFocus && field.contentWidth > field.width - field.leftPadding - field.rightPadding
        // The loader makes this in the file's context, which the linter does not know.
        // qmllint disable unqualified
        sourceComponent: ElidedText {
            text: field.text
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true
        }
        // qmllint enable unqualified
    }
}
