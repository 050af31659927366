import QtQuick
import Tessary

// The one way to choose a file. The dialog is made when it is first opened: its libraries are the slowest to load.
Loader {
    required property FileSlot slot

    function open() {
        if (!item)
            setSource("DesktopFileDialog.qml", {
                slot: slot
            });
        item.open(); // qmllint disable
    }
}
