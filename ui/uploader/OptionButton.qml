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

    contentItem: StyledText {
        text: option.text
        color: Look.mixed(Look.labelColor, Look.alternateSelectedControlTextColor, spring.value)
        wrapMode: option.wrapMode
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    background: Item {
        Squircle {
            anchors.fill: parent
            radius: 8
            fill: Look.faded(Look.selectedControlColor, 0.3)
            opacity: option.highlighted && !option.selected ? 1 : 0

            Behavior on opacity {
                EaseMotion {
                    seconds: 0.2
                }
            }
        }

        Squircle {
            anchors.fill: parent
            radius: 8
            outline: Look.outlineColor
            lineWidth: 1
        }

        Squircle {
            anchors.fill: parent
            radius: 8
            fill: Look.systemBlueColor
            outline: Look.systemBlueColor
            lineWidth: 1
            opacity: spring.value
        }
    }
}
