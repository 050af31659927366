import QtQuick
import QtQuick.Dialogs
import Tessary

// The one way to choose a file: the desktop's dialog, for one file of any type.
FileDialog {
    required property FileSlot slot

    objectName: "openFileDialog"
    fileMode: FileDialog.OpenFile
    modality: Qt.ApplicationModal
    onAccepted: slot.choose(selectedFile)
}
