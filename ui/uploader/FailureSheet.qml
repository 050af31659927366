import QtQuick
import Tessary
import Tessary.Look

// Why the last upload failed, as far as the transfer tool tells.
Sheet {
    id: sheet

    required property FailureReport report

    objectName: "failureSheet"
    contentWidth: 432
    Accessible.name: title.text
    Accessible.description: words.text
    onDismissed: report.shown = false
    Component.onCompleted: close.forceActiveFocus(Qt.PopupFocusReason)

    StyledText {
        id: title

        width: parent.width
        text: qsTr("Why the upload failed")
        font: Look.headline
    }

    StyledText {
        id: words

        objectName: "failureWords"
        width: parent.width
        text: sheet.report.words
        wrapMode: Text.Wrap
    }

    TextEdit {
        id: line

        objectName: "failureLine"
        width: parent.width
        visible: text !== ""
        text: sheet.report.line
        textFormat: TextEdit.PlainText
        font: Look.monospacedCaption
        color: Look.secondaryLabelColor
        selectionColor: Look.selectedTextBackgroundColor
        selectedTextColor: Look.labelColor
        wrapMode: TextEdit.Wrap
        readOnly: true
        selectByMouse: true
        activeFocusOnTab: true
        Accessible.role: Accessible.EditableText
        Accessible.readOnly: true
        Accessible.name: qsTr("What the tool says")
        KeyNavigation.tab: copy
    }

    Item {
        width: 1
        height: Look.spacing
    }

    Flow {
        width: parent.width
        spacing: Look.spacing
        layoutDirection: Qt.RightToLeft

        PushButton {
            id: close

            objectName: "closeFailureSheet"
            text: qsTr("Close")
            prominent: true
            KeyNavigation.tab: line
            onClicked: sheet.dismissed()
        }

        PushButton {
            id: copy

            objectName: "copyFailure"
            text: qsTr("Copy")
            visible: line.visible
            KeyNavigation.tab: open
            onClicked: {
                line.selectAll();
                line.copy();
                line.deselect();
            }
        }

        PushButton {
            id: open

            objectName: "openToolReport"
            text: qsTr("Open the tool's report")
            visible: sheet.report.hasLogFile
            KeyNavigation.tab: close
            onClicked: Qt.openUrlExternally(sheet.report.logFile)
        }
    }
}
