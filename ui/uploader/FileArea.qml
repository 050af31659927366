import QtQuick
import Tessary

// One picker, or one for each eye.
Item {
    id: area

    required property FileUploaderState uploader
    readonly property bool forEyes: uploader.takesTwoFiles

    implicitHeight: forEyes ? eyes.implicitHeight : single.implicitHeight
    onForEyesChanged: fade.restart()

    EaseMotion {
        id: fade

        target: area
        property: "opacity"
        from: 0
        to: 1
        seconds: 0.2
    }

    SingleFilePickerView {
        id: single

        width: filled ? area.width : Math.min(implicitWidth, area.width)
        height: implicitHeight
        visible: !area.forEyes
        uploader: area.uploader
    }

    Loader {
        id: eyes

        width: area.width
        active: area.forEyes
        // The loader makes this in the file's context, which the linter does not know.
        // qmllint disable unqualified
        sourceComponent: Column {
            spacing: 12

            EyePickerView {
                width: area.width
                zoneName: "leftEyePicker"
                label: qsTr("Left Eye File")
                uploader: area.uploader
                place: FileSlot.LeftEye
            }

            EyePickerView {
                width: area.width
                zoneName: "rightEyePicker"
                label: qsTr("Right Eye File")
                uploader: area.uploader
                place: FileSlot.RightEye
            }
        }
        // qmllint enable unqualified
    }
}
