import QtQuick
import Tessary.Look

// A question over the whole window, with the safe answer as the way out by Escape.
Sheet {
    id: sheet

    property alias question: title.text
    property alias explanation: explanationText.text
    property alias yes: yesButton.text
    property alias no: noButton.text

    signal answered(bool yes)

    contentWidth: Math.max(292, 2 * Math.max(yesButton.implicitWidth, noButton.implicitWidth) + answers.spacing)
    Accessible.name: question
    Accessible.description: explanation
    onDismissed: answered(false)
    Component.onCompleted: noButton.forceActiveFocus(Qt.PopupFocusReason)

    StyledText {
        id: title

        width: parent.width
        font: Look.headline
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
    }

    StyledText {
        id: explanationText

        width: parent.width
        font: Look.subheadline
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
    }

    Item {
        width: 1
        height: Look.spacing
    }

    Row {
        id: answers

        width: parent.width
        spacing: Look.spacing

        PushButton {
            id: yesButton

            objectName: "confirmButton"
            width: (answers.width - answers.spacing) / 2
            KeyNavigation.tab: noButton
            KeyNavigation.backtab: noButton
            onClicked: sheet.answered(true)
        }

        PushButton {
            id: noButton

            objectName: "declineButton"
            prominent: true
            width: (answers.width - answers.spacing) / 2
            KeyNavigation.tab: yesButton
            KeyNavigation.backtab: yesButton
            onClicked: sheet.answered(false)
        }
    }
}
