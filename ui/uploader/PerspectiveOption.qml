import QtQuick
import Tessary

OptionButton {
    id: option

    required property string modelData
    required property int index
    required property FileUploaderState uploader

    objectName: "perspectiveOption:" + modelData
    text: modelData + "\u00b0"
    leftPadding: 16
    rightPadding: 16
    selected: uploader.selectedPerspective === modelData
    onClicked: uploader.selectedPerspective = modelData
}
