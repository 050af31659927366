import QtQuick
import Tessary

// Says for a moment, over the whole screen, that an upload is complete. It is there while it is shown and while it
// fades; each time it comes up it asks for its end.
SuccessNotice {
    id: overlay

    required property FileUploaderState uploader

    shown: uploader.showSuccessAnimation
    opacity: shown ? 1 : 0
    visible: shown || opacity > 0
    onAppeared: uploader.successOverlayAppeared()

    Behavior on opacity {
        EaseMotion {}
    }
}
