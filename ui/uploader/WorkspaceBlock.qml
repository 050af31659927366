import QtQuick
import QtQuick.Layouts
import Tessary.Look

// The workspace's name, as a button that leads to the screen for another key.
PlainButton {
    id: block

    required property bool isHeaderHovered
    required property string workspaceName
    required property bool known
    property bool cut: false ///< there is no room for all of the name

    objectName: "workspaceBlock"
    padding: Look.padding
    ringRadius: 12
    text: known ? workspaceName : qsTr("Loading...")
    explanation: qsTr("Change workspace")
    tip: cut ? text : ""
    scale: 1 + 0.02 * lift.value

    EaseValue {
        id: lift

        animated: Look.animations
        seconds: 0.2
        goal: block.isHeaderHovered ? 1 : 0
    }

    SpringValue {
        id: tilt

        animated: Look.animations
        goal: block.isHeaderHovered ? 1 : 0
    }

    contentItem: RowLayout {
        spacing: 15

        Symbol {
            name: "icloud.and.arrow.up.fill"
            color: Look.systemBlueColor
            fontSize: Look.headerSymbol
            turn: 10 * tilt.value
        }

        StyledText {
            Layout.fillWidth: true
            text: block.text
            font: Look.title2
            color: block.known ? Look.labelColor : Look.secondaryLabelColor
            opacity: block.known ? 1 : 0.8
            elide: Text.ElideRight
            maximumLineCount: 1
            onTruncatedChanged: block.cut = truncated
            Accessible.ignored: true
        }
    }
    background: Item {
        BlurredShadow {
            anchors.fill: parent
            radius: block.ringRadius
            blur: 8
            offset: Qt.point(0, 2)
            color: Look.faded(Look.systemBlueColor, 0.2)
            opacity: lift.value
        }

        Squircle {
            anchors.fill: parent
            radius: block.ringRadius
            fill: Look.controlBackgroundColor
        }
    }
}
