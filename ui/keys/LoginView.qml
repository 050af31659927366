import QtQuick
import Tessary

// The screen without a key: asks for one.
KeyScreen {
    id: view

    required property SessionManager sessionManager

    form: KeyForm {
        sessionManager: view.sessionManager
    }
    heading: qsTr("Welcome")
    submitText: qsTr("Set API Key")
    errorMessage: sessionManager.signInProblem
}
