import QtQuick
import Tessary
import Tessary.Look

// The main screen: the header over the form card and the log card, and the success overlay over all of it. It is
// made with a state of its own, which an upload keeps alive when the screen goes.
FocusScope {
    id: view

    required property UploaderStateFactory uploaderStates
    required property SessionManager sessionManager
    required property AppManager appManager
    /// How far this screen's upload is; empty while none is under way.
    readonly property string progressInBrief: holder.state?.progressInBrief ?? ""

    UploaderStateHolder {
        id: holder

        factory: view.uploaderStates
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
            FocusScope {
                anchors.fill: parent
                focus: !reason.wanted
                enabled: !reason.wanted

                UploaderHeaderView {
                    id: header

                    width: parent.width
                    uploader: holder.state
                    sessionManager: view.sessionManager
                    appManager: view.appManager
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

            Loader {
                id: reason

                readonly property FailureReport report: holder.state.failureReport
                readonly property bool wanted: report?.shown ?? false

                anchors.fill: parent
                focus: wanted
                onWantedChanged: {
                    if (wanted)
                        setSource("FailureSheet.qml", {
                            report: reason.report
                        });
                    else
                        source = "";
                }
            }
        }
        // qmllint enable unqualified
    }
}
