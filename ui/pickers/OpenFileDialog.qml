import QtQuick
import Tessary

// The one way to choose a file: in the portal's dialog, or else the toolkit's, which is the desktop's own where its theme
// is installed. That one is made when it is first opened: its libraries are the slowest to load.
Item {
    id: dialog

    required property FileSlot slot

    function open() {
        chooser.open(Window.window);
    }

    FileChooser {
        id: chooser

        onChosen: file => dialog.slot.choose(file)
        onToolkitWanted: toolkit.open()
        onWaitingChanged: {
            if (waiting)
                pause.active = true;
        }
    }

    Loader {
        id: toolkit

        function open() {
            if (!item)
                setSource("DesktopFileDialog.qml", {
                    slot: dialog.slot
                });
            item.currentFolder = dialog.slot.startFolder(); // qmllint disable
            item.open(); // qmllint disable
        }
    }

    Loader {
        id: pause

        active: false
        // The loader makes this in the file's context, which the linter does not know.
        // qmllint disable unqualified
        sourceComponent: ModalPause {
            visible: chooser.waiting
        }
        // qmllint enable unqualified
    }
}
