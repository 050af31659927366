import QtQuick
import QtQuick.Templates as T
import Tessary.Look

// What a tip shows: plain text beside the pointer, at its height, so that it covers no neighbour's text.
Item {
    id: place

    readonly property Tip tip: parent as Tip // which is the first thing that it gets

    HoverHandler {
        id: hover
    }

    T.ToolTip {
        id: bubble

        text: place.tip.text
        visible: true
        margins: 4
        onAboutToShow: {
            x = Math.round(hover.point.position.x + 16);
            y = Math.round(hover.point.position.y - implicitHeight / 2);
        }
        padding: 5
        leftPadding: 8
        rightPadding: 8
        implicitWidth: Math.min(contentItem.implicitWidth + leftPadding + rightPadding, 400)
        implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
        delay: 800
        closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent | T.Popup.CloseOnReleaseOutsideParent
        font: Look.subheadline

        contentItem: StyledText {
            objectName: "tip"
            text: bubble.text
            font: bubble.font
            wrapMode: Text.Wrap
            elide: Text.ElideRight
            maximumLineCount: 20
            Accessible.ignored: true
        }
        background: Panel {
            radius: 5
            outline: Look.separatorColor
            blur: 6
            offset: Qt.point(0, 2)
            shadowColor: Look.faded(Look.shadowColor, 0.2)
        }
    }
}
