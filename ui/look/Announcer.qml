import QtQuick

// Has screen readers say texts at once, wherever the person is. The toolkit has no event for that; what they read out
// unasked is a notification that comes up. There is nothing of it to see.
Item {
    id: announcer

    property int last: -1
    property string said

    function say(text: string) {
        if (text === "" || text === said && saidNow.running)
            return;
        room.active = true;
        const notes = room.item as Repeater;
        if (last >= 0)
            notes.itemAt(last).visible = false;
        said = text;
        last = (last + 1) % notes.count;
        const note = notes.itemAt(last);
        note.text = text;
        note.visible = true;
        saidNow.restart();
    }

    anchors.fill: parent

    // What is told twice, as the end of an upload by the click and by the tool, is not said twice.
    Timer {
        id: saidNow

        interval: 5000
    }

    // In turn: a screen reader may come to read a text only when the next ones are there already. Made with the first.
    Loader {
        id: room

        anchors.fill: parent
        active: false
        sourceComponent: Repeater {
            model: 4

            Item {
                property string text

                anchors.fill: parent
                visible: false
                Accessible.role: Accessible.Notification
                Accessible.name: text
                Accessible.ignored: text === ""
                Component.onDestruction: visible = false // else it comes up once more as what it lies in goes
            }
        }
    }
}
