import QtQuick
import Tessary

// The main screen: the header over the form card and the log card, and the success overlay over all of it. It is
// made with a state of its own, which an upload keeps alive when the screen goes.
FocusScope {
    id: view

    required property UploaderApp application

    UploaderStateHolder {
        id: holder

        application: view.application
    }

    Rectangle {
        anchors.fill: parent
        color: Look.windowBackgroundColor
    }

    Loader {
        anchors.fill: parent
        active: holder.state !== null
        focus: true
        // The loader makes this in the file's context, which the linter does not know.
        // qmllint disable unqualified
        sourceComponent: FocusScope {
            UploaderHeaderView {
                id: header

                width: parent.width
                uploader: holder.state
                sessionManager: view.application.sessionManager
                appManager: view.application.appManager
            }

            CardRow {
                anchors.top: header.bottom
                anchors.bottom: parent.bottom
                width: parent.width
                uploader: holder.state
            }

            SuccessOverlay {
                anchors.fill: parent
                uploader: holder.state
            }
        }
        // qmllint enable unqualified
    }
}
