import QtQuick
import QtQuick.Dialogs
import Tessary

// The desktop's own dialog, for one file of any type.
FileDialog {
    required property FileSlot slot

    objectName: "openFileDialog"
    fileMode: FileDialog.OpenFile
    modality: Qt.ApplicationModal
    onAccepted: slot.choose(selectedFile)
}
