import QtQuick
import QtQuick.Templates as T
import Tessary

// What a tip shows: plain text below the control that it explains.
T.ToolTip {
    id: tip

    x: parent ? Math.round((parent.width - implicitWidth) / 2) : 0
    y: parent ? parent.height + 4 : 0
    margins: 4
    padding: 5
    leftPadding: 8
    rightPadding: 8
    implicitWidth: Math.min(contentItem.implicitWidth + leftPadding + rightPadding, 400)
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    delay: 800
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent | T.Popup.CloseOnReleaseOutsideParent
    font: Look.subheadline

    contentItem: StyledText {
        text: tip.text
        font: tip.font
        wrapMode: Text.Wrap
        Accessible.ignored: true
    }
    background: Item {
        BlurredShadow {
            anchors.fill: parent
            radius: 5
            blur: 6
            offset: Qt.point(0, 2)
            color: Look.faded(Look.shadowColor, 0.2)
        }

        Squircle {
            anchors.fill: parent
            radius: 5
            fill: Look.windowBackgroundColor
            outline: Look.separatorColor
            lineWidth: 1
        }
    }
}
