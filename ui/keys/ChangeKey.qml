import QtQuick
import Tessary

// Lets a signed-in user replace the key, or go back.
KeyScreen {
    id: view

    required property SessionManager sessionManager
    required property AppManager appManager

    form: ChangeKeyForm {
        id: changeForm

        sessionManager: view.sessionManager
        appManager: view.appManager
    }
    heading: qsTr("Change Workspace")
    submitText: qsTr("Change API Key")
    cancelText: qsTr("Cancel")
    onCanceled: changeForm.cancel()
}
