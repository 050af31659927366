import QtQuick
import Tessary
import Tessary.Look

// One picker, or one for each eye; one gives way to the other on the spring that everything below moves with.
Item {
    id: area

    required property FileUploaderState uploader
    readonly property bool forEyes: uploader.takesTwoFiles
    readonly property alias amount: spring.value ///< 0 for the one picker, 1 for the two

    objectName: "fileArea"
    implicitHeight: single.implicitHeight + (eyes.implicitHeight - single.implicitHeight) * amount

    /// The first picker that holds no file; null when each holds one.
    function firstEmpty(): Item {
        const pickers = forEyes ? Array.from(eyes.item.children) : [single]; // qmllint disable
        return pickers.find(picker => !picker.filled) ?? null;
    }

    Shortcut {
        sequence: "Ctrl+O"
        enabled: area.enabled
        onActivated: area.firstEmpty()?.browse() // qmllint disable
    }

    SpringValue {
        id: spring

        animated: Look.animations
        goal: area.forEyes ? 1 : 0
    }

    SingleFilePickerView {
        id: single

        width: filled ? area.width : Math.min(implicitWidth, area.width)
        height: implicitHeight
        visible: opacity > 0
        enabled: !area.forEyes
        opacity: 1 - area.amount
        uploader: area.uploader
    }

    Loader {
        id: eyes

        width: area.width
        active: area.forEyes || area.amount > 0
        enabled: area.forEyes
        opacity: area.amount
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
