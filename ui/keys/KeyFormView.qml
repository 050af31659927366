import QtQuick
import Tessary
import Tessary.Look

// The form in the card of a key screen. It takes the focus, which was asked for before it showed.
Column {
    id: view

    required property KeyForm form
    required property string heading
    required property string submitText
    required property string cancelText
    required property string errorMessage
    required property bool focusWanted
    readonly property Item keyField: keyGroup.field
    property real amount: 0

    signal canceled

    spacing: 24
    opacity: amount
    onVisibleChanged: amount = visible ? 1 : 0
    onFocusWantedChanged: {
        if (focusWanted)
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
            text: view.heading
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
        form: view.form
    }

    ErrorLine {
        width: view.width
        errorMessage: view.errorMessage
    }

    PushButton {
        objectName: "submitKeyButton"
        width: view.width
        text: view.submitText
        prominent: true
        enabled: view.form.apiKey !== ""
        onClicked: view.form.submitKey()
    }

    PushButton {
        objectName: "cancelKeyButton"
        width: view.width
        visible: view.cancelText !== ""
        Accessible.ignored: view.cancelText === ""
        text: view.cancelText
        textColor: Look.grayTextColor
        onClicked: view.canceled()
    }
}
