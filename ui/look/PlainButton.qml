import QtQuick
import QtQuick.Templates as T
import Tessary

// A button with no look of its own: the mouse, Space and Return press it, the keyboard's focus shows as a ring, and
// a tip may explain it.
T.AbstractButton {
    id: button

    property string tip
    property string explanation ///< for screen readers
    property real ringRadius: 8

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    Accessible.description: enabled ? explanation : qsTr("Not available now")
    Keys.onPressed: event => {
        if (event.key !== Qt.Key_Return && event.key !== Qt.Key_Enter)
            return;
        event.accepted = true;
        if (!event.isAutoRepeat)
            button.clicked();
    }

    FocusRing {
        visible: button.visualFocus
        radius: button.ringRadius + 2
    }

    Tip {
        text: button.tip
        shown: button.hovered && button.tip !== ""
    }
}
