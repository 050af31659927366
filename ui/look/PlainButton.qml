import QtQuick
import QtQuick.Templates as T
import Tessary.Look

// A button with no look of its own: the mouse, Space and Return press it, which shows, as the keyboard's focus does, and
// a tip may explain it.
T.AbstractButton {
    id: button

    property alias tip: marks.tip
    property alias ringRadius: marks.radius
    property string explanation ///< for screen readers

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    Accessible.name: text
    Accessible.description: enabled ? explanation : qsTr("Not available now")
    Keys.onPressed: event => ReturnKey.handle(event, () => button.clicked())

    ControlStates {
        id: marks

        control: button
    }
}
