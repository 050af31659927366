import QtQuick
import QtQuick.Templates as T
import Tessary.Look

// The bar beside a scroll area's content, which shows and changes how far it is scrolled.
T.ScrollBar {
    id: bar

    required property ScrollArea area
    required property Flickable flickable

    objectName: "scrollBar"
    leftPadding: 7
    rightPadding: 1 // beside the text, not on it
    topPadding: area.barInset
    bottomPadding: area.barInset
    minimumSize: 0.08
    implicitWidth: 12
    Accessible.ignored: true // its area scrolls to what the keyboard is at
    Component.onCompleted: flickable.T.ScrollBar.vertical = bar

    contentItem: Squircle {
        implicitWidth: 4
        radius: 2
        fill: Look.labelColor
        opacity: bar.pressed || bar.hovered ? 0.7 : 0.52
    }
}
