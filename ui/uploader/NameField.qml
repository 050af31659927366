import QtQuick
import QtQuick.Templates as T
import Tessary

T.TextField {
    id: field

    required property FileUploaderState uploader

    objectName: "nameField"
    implicitHeight: contentHeight + topPadding + bottomPadding
    padding: 10
    text: uploader.videoName
    font: Look.body
    color: shortened.visible ? Look.transparent : Look.labelColor
    selectionColor: Look.selectedTextBackgroundColor
    selectedTextColor: Look.labelColor
    selectByMouse: true
    verticalAlignment: TextInput.AlignVCenter
    Accessible.name: qsTr("Video Name")
    background: Squircle {
        radius: 8
        fill: Look.textBackgroundColor
        outline: Look.separatorColor
        lineWidth: 1
    }
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
    StyledText {
        id: shortened

        anchors.fill: parent
        anchors.margins: 10
        visible: !field.activeFocus && field.contentWidth > field.width - field.leftPadding - field.rightPadding
        text: field.text
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        Accessible.ignored: true
    }

    FocusRing {
        visible: field.activeFocus
        radius: 10
    }
}
