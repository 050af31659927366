import QtQuick
import Tessary
import Tessary.Look

// The whole log as one text. It takes a change of the log up once per frame and then follows its end; a log that is
// announced but the same is left alone, with its selection and its place.
ScrollArea {
    id: view

    required property FileUploaderState uploader
    readonly property bool exposed: InView.exposed
    property string shownLogs
    property bool stale: false
    property int worn: 0 ///< characters inserted since the text was last set as a whole
    readonly property int bearable: 20000 ///< the toolkit keeps until then what was removed, and is slowed down by it

    contentHeight: Math.max(height, log.implicitHeight + 2 * log.y)
    Component.onCompleted: {
        shownLogs = uploader.logs;
        log.setWhole(shownLogs);
    }
    onVisibleChanged: {
        if (visible)
            takeUp(false); // the log follows its end at the next change
    }

    onExposedChanged: {
        if (visible && exposed)
            noticeChange();
    }

    function noticeChange() {
        // An announcement of what is shown already asks for no frame.
        if (stale || uploader.logs === shownLogs)
            return;
        stale = true;
        if (Window.window)
            Window.window.update();
    }

    // How much of the end of what was is the start of what is. Laid out once, it stays so, with its selection, while the log
    // loses its first lines to new ones.
    function common(before, now) {
        const from = now.startsWith(before) ? 0 : before.indexOf(now.substring(0, 50));
        return from >= 0 && now.startsWith(before.substring(from)) ? before.length - from : 0;
    }

    function takeUp(follow: bool) {
        stale = false;
        const logs = uploader.logs;
        if (logs === shownLogs)
            return;
        const kept = worn < bearable && log.length === shownLogs.length ? common(shownLogs, logs) : 0;
        if (kept === 0) {
            log.setWhole(logs);
            worn = 0;
        } else {
            log.remove(0, shownLogs.length - kept);
            log.insert(kept, logs.substring(kept));
            worn += logs.length - kept;
        }
        shownLogs = logs;
        if (follow)
            scrollToEnd();
    }

    Connections {
        function onLogsChanged() {
            view.noticeChange();
        }

        target: view.uploader
        enabled: view.visible && view.exposed // what cannot be seen waits until it can
    }

    Connections {
        function onAfterAnimating() {
            view.takeUp(true);
        }

        target: view.Window.window
        enabled: view.stale
    }

    TextEdit {
        id: log

        objectName: "logText"
        x: 5
        y: 5
        width: view.width - 2 * x
        height: Math.max(implicitHeight, view.height - 2 * y)
        textFormat: TextEdit.PlainText
        font: Look.monospacedCaption
        color: Look.labelColor
        selectionColor: Look.selectedTextBackgroundColor
        selectedTextColor: Look.labelColor
        wrapMode: TextEdit.Wrap
        readOnly: true
        selectByMouse: true
        selectByKeyboard: true
        persistentSelection: true
        activeFocusOnTab: true
        Accessible.role: Accessible.EditableText
        Accessible.readOnly: true
        Accessible.multiLine: true
        Accessible.name: qsTr("Upload log")
        onCursorRectangleChanged: {
            if (activeFocus && !view.stale)
                view.show(Qt.rect(0, cursorRectangle.y + y - 5, 1, cursorRectangle.height + 10));
        }

        function setWhole(whole: string) {
            text = whole;
            InView.cull();
        }
    }

    FocusRing {
        parent: view
        radius: 12
        inside: true
        shown: log.activeFocus
    }
}
