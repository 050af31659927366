import QtQuick
import Tessary
import Tessary.Look

// The form in the card of a key screen. It is made when it comes in, and takes the focus, which was asked for before.
Column {
    id: view

    required property KeyScreen screen
    readonly property Item keyField: keyGroup.field
    property real amount: 0

    spacing: 24
    opacity: amount
    Component.onCompleted: {
        amount = 1;
        if (screen.focusedField === KeyScreen.ApiKey)
            keyField.forceActiveFocus(Qt.OtherFocusReason);
    }

    Behavior on amount {
        SequentialAnimation {
            PauseAnimation {
                duration: Look.animations ? 200 : 0
            }

            EaseMotion {
                onlyOut: true
                seconds: 0.4
            }
        }
    }

    Column {
        width: view.width
        spacing: 6

        StyledText {
            width: parent.width
            text: view.screen.heading
            font: Look.heading
            horizontalAlignment: Text.AlignHCenter
            elide: Text.ElideRight
            Accessible.role: Accessible.Heading
        }

        StyledText {
            width: parent.width
            text: qsTr("Enter your API key")
            color: Look.secondaryLabelColor
            horizontalAlignment: Text.AlignHCenter
            elide: Text.ElideRight
        }
    }

    KeyField {
        id: keyGroup

        width: view.width
        form: view.screen.form
    }

    ErrorLine {
        width: view.width
        errorMessage: view.screen.errorMessage
    }

    PushButton {
        objectName: "submitKeyButton"
        width: view.width
        text: view.screen.submitText
        prominent: true
        enabled: view.screen.form.apiKey !== ""
        onClicked: view.screen.form.submitKey()
    }

    PushButton {
        objectName: "cancelKeyButton"
        width: view.width
        visible: view.screen.cancelText !== ""
        Accessible.ignored: view.screen.cancelText === ""
        text: view.screen.cancelText
        textColor: Look.grayTextColor
        onClicked: view.screen.canceled()
    }
}
