import QtQuick
import QtQuick.Templates as T
import Tessary.Look

// What a tip shows: plain text beside the pointer, at its height, so that it covers no neighbour's text.
T.ToolTip {
    id: tip

    required property point pointer ///< in the control

    margins: 4
    onAboutToShow: {
        x = Math.round(pointer.x + 16);
        y = Math.round(pointer.y - implicitHeight / 2);
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
        text: tip.text
        font: tip.font
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
