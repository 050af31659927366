import QtQuick
import QtQuick.Templates as T

// Nothing to see: the window takes no input while it is shown, and has its focus back afterwards.
T.Popup {
    parent: T.Overlay.overlay
    modal: true
    focus: true
    closePolicy: T.Popup.NoAutoClose
    Component.onCompleted: contentItem.parent.Accessible.ignored = true // no dialog to screen readers
}
