import QtQuick
import Tessary

OptionButton {
    id: option

    required property string modelData
    required property FileUploaderState uploader

    objectName: "formatOption:" + modelData
    text: modelData
    tip: modelData
    selected: uploader.selectedFileFormat === modelData
    highlighted: uploader.hoverStates[modelData] === true
    wrapMode: Text.Wrap
    onHoveredChanged: uploader.setHovered(modelData, hovered)
    onClicked: uploader.selectFormat(modelData)
}
