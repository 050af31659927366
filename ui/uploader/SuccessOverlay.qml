import QtQuick
import Tessary
import Tessary.Look

// Says for a moment, over the whole screen, that an upload is complete. It is there while it is shown and while it
// fades; each time it comes up it asks for its end. What was aimed at it when it went must not hit what lies beneath.
Loader {
    id: overlay

    required property FileUploaderState uploader
    readonly property bool shown: uploader.showSuccessAnimation

    opacity: fade.value
    visible: active
    active: shown || opacity > 0 || goneNow.running
    onShownChanged: {
        if (!shown)
            goneNow.restart();
    }
    source: Qt.resolvedUrl("SuccessNotice.qml")

    Timer {
        id: goneNow

        interval: Look.reactionTime
    }

    EaseValue {
        id: fade

        animated: Look.animations
        goal: overlay.shown ? 1 : 0
    }
}
