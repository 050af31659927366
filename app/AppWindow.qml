import QtQuick
import Tessary.App
import Tessary.Look

// One window: shows the screen that the application chooses and makes it anew when the choice changes.
Window {
    id: window

    required property Program program
    required property UploaderApp application
    readonly property bool questionIsVoid: voidTime.running
    readonly property string quitExplanation: {
        const loss = qsTr("What is being uploaded or added to the library now will not be finished.");
        const progress = application.uploadActivity.progressInWords;
        return progress ? qsTr("%1. %2").arg(progress).arg(loss) : loss;
    }
    readonly property string progressInBrief: content.item?.progressInBrief ?? ""

    /// Closing this window would end the program, and with it what is under way.
    function mayClose(): bool {
        return program.windowCount > 1 || !application.uploadActivity.underWay;
    }

    function quitOrAsk() {
        if (application.uploadActivity.underWay)
            ask();
        else
            program.quit();
    }

    function ask() {
        voidTime.stop();
        if (!quitLoader.shown)
            quitLoader.setSource("QuitQuestion.qml", {
                asker: window
            });
    }

    function answer(quit: bool) {
        quitLoader.source = "";
        if (quit)
            program.quit();
    }

    width: 1000
    minimumWidth: 900
    minimumHeight: 600
    title: progressInBrief ? qsTr("%1 - %2").arg(progressInBrief).arg(Application.displayName) : Application.displayName
    // Only a window that starts out translucent can ever be; the screens fill all of it.
    color: DesktopTheme.composited ? Look.transparent : Look.windowBackgroundColor
    // Before it is first shown, so that it is placed in this size; and once, since the size is the person's from then on.
    Component.onCompleted: {
        const wholeForm = 640 + 16 * bodyText.height; // with two pickers, and no scrolling
        height = Math.max(minimumHeight, Math.min(Math.ceil(wholeForm), Screen.desktopAvailableHeight));
        show();
    }
    onClosing: close => {
        close.accepted = mayClose();
        if (!close.accepted)
            ask();
    }

    FontMetrics {
        id: bodyText

        font: Look.body
    }

    // By address: what a screen is made of is then not read before that screen is shown.
    Loader {
        id: content

        readonly property int screen: window.application.screen

        function show() {
            switch (screen) {
            case UploaderApp.Login:
                return setSource("../keys/LoginView.qml", {
                    focus: true,
                    sessionManager: window.application.sessionManager
                });
            case UploaderApp.ChangeKey:
                return setSource("../keys/ChangeKey.qml", {
                    focus: true,
                    sessionManager: window.application.sessionManager,
                    appManager: window.application.appManager
                });
            default:
                return setSource("../uploader/FileUploaderView.qml", {
                    focus: true,
                    uploaderStates: window.application.uploaderStates,
                    sessionManager: window.application.sessionManager,
                    appManager: window.application.appManager
                });
            }
        }

        anchors.fill: parent
        focus: !quitLoader.shown
        enabled: !quitLoader.shown
        onScreenChanged: {
            if (item === null)
                return; // on its way to the first one
            changeTime.restart();
            show();
        }
        Component.onCompleted: show()
    }

    // A press that was aimed at the screen that has just gone must not hit what is there instead.
    MouseArea {
        objectName: "pressGuard"
        anchors.fill: parent
        visible: changeTime.running
        acceptedButtons: Qt.AllButtons
    }

    Timer {
        id: changeTime

        objectName: "changeTime"
        interval: Look.reactionTime
    }

    Loader {
        id: quitLoader

        readonly property bool shown: item !== null

        anchors.fill: parent
        focus: shown
    }

    // The question is void when nothing is under way any more. What was aimed at it must not hit what lies beneath.
    Connections {
        function onUnderWayChanged() {
            if (!window.application.uploadActivity.underWay && quitLoader.shown)
                voidTime.start();
        }

        target: window.application.uploadActivity
    }

    // The session wants to end, and was told to wait for the answer.
    Connections {
        function onQuestionWanted(asked) {
            if (asked === window)
                window.ask();
        }

        target: window.program
    }

    Timer {
        id: voidTime

        interval: Look.reactionTime
        onTriggered: quitLoader.source = ""
    }

    Shortcut {
        sequence: "Ctrl+N"
        onActivated: window.program.openWindow()
    }

    Shortcut {
        sequence: "Ctrl+W"
        onActivated: window.close()
    }

    Shortcut {
        sequence: "Ctrl+Q"
        onActivated: window.quitOrAsk()
    }
}
