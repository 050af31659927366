import QtQuick
import QtQuick.Templates as T
import Tessary.Look

// One of several options, of which one is selected. Pressing the selected one acts again.
T.RadioButton {
    id: option

    required property FocusScope group
    property bool selected: false
    property bool highlighted: false
    property alias tip: marks.tip
    property int wrapMode: Text.NoWrap

    topPadding: 8
    bottomPadding: 8
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    hoverEnabled: true
    activeFocusOnTab: activeFocus || (selected && !group.activeFocus)
    z: visualFocus ? 2 : selected ? 1 : 0 // its ring and its outline lie over its neighbours
    checked: selected
    Accessible.name: text
    Accessible.description: enabled ? "" : qsTr("Not available now")
    onCheckedChanged: lookAgain.running = checked && !selected
    Keys.onPressed: event => ReturnKey.handle(event, () => option.clicked())

    // A screen reader checks the option without a click. After a click it is selected by the time this looks.
    Timer {
        id: lookAgain

        interval: 0
        onTriggered: {
            if (option.checked && !option.selected)
                option.clicked();
        }
    }

    ControlStates {
        id: marks

        control: option
    }

    SpringValue {
        id: spring

        animated: Look.animations
        goal: option.selected ? 1 : 0
    }

    EaseValue {
        id: highlight

        animated: Look.animations
        seconds: 0.2
        goal: option.highlighted && !option.selected ? 1 : 0
    }

    contentItem: StyledText {
        text: option.text
        color: Look.mixed(Look.labelColor, Look.alternateSelectedControlTextColor, spring.value)
        wrapMode: option.wrapMode
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    // The outline is the selection's own by and by, and the selection lies over what the pointer brings up.
    background: Squircle {
        radius: 8
        fill: Look.over(Look.faded(Look.selectedControlColor, 0.3 * highlight.value), Look.systemBlueColor, spring.value)
        outline: Look.mixed(Look.outlineColor, Look.systemBlueColor, spring.value)
        lineWidth: 1
    }
}
