import QtQuick
import Tessary.Look

// A question over the whole window, with the safe answer as the way out by Escape.
FocusScope {
    id: sheet

    property alias question: title.text
    property alias explanation: explanationText.text
    property alias yes: yesButton.text
    property alias no: noButton.text

    signal answered(bool yes)

    anchors.fill: parent
    z: 10
    focus: true
    Accessible.role: Accessible.Dialog
    Accessible.name: question
    Accessible.description: explanation
    Keys.onEscapePressed: answered(false)
    Component.onCompleted: noButton.forceActiveFocus(Qt.PopupFocusReason)

    Scrim {
        anchors.fill: parent
    }

    Panel {
        readonly property real widerAnswer: Math.max(yesButton.implicitWidth, noButton.implicitWidth)

        anchors.centerIn: parent
        width: Math.min(Math.max(340, 2 * column.x + 2 * widerAnswer + answers.spacing), sheet.width - 2 * Look.padding)
        height: column.height + 2 * column.y
        blur: 20
        offset: Qt.point(0, 10)
        shadowColor: Look.faded(Look.black, 0.3)

        Column {
            id: column

            x: 24
            y: 24
            width: parent.width - 2 * x
            spacing: Look.spacing

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
    }
}
