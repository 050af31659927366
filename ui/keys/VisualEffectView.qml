import QtQuick
import Tessary.Look

// The background of a whole window: the sidebar's tone, through which the desktop behind shows where it can. It
// looks the same whether or not the window is active.
Rectangle {
    id: view

    color: Look.faded(Look.sidebarColor, DesktopTheme.composited ? 0.88 : 1)

    // Nothing tells when compositing starts or ends; a window is activated or shown afterwards.
    Connections {
        function onActiveChanged() {
            DesktopTheme.compositorLookedFor();
        }

        target: view.Window.window
    }
}
