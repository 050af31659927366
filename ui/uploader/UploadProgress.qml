import QtQuick
import Tessary.Look

// How much is uploaded. The fill is as wide as `progress` says, also beyond the track; what is no number is nothing.
ProgressItem {
    id: track

    required property double progress
    required property string words ///< how far it is and how long it will take; empty while that is not known
    readonly property real value: isFinite(progress) ? progress : 0
    readonly property real farthest: 8000 ///< beyond any screen; more is not drawn
    readonly property real slack: 1 ///< what lies on whole device pixels may lie beside its place by less

    objectName: "progressBar"
    implicitWidth: 100
    implicitHeight: 8
    label: qsTr("Upload progress")
    description: words
    percent: Math.round(Math.max(0, Math.min(value, 1)) * 100)
    Accessible.role: Accessible.ProgressBar

    HoverHandler {
        id: pointer
    }

    Tip {
        text: track.words
        shown: pointer.hovered && track.words !== ""
    }

    Squircle {
        id: groove

        anchors.fill: parent
        radius: 4
        fill: Look.trackColor
        outline: Look.plainOutlineColor
        lineWidth: 1
        lineInside: true
    }

    Item {
        id: amount

        objectName: "progressFill"
        width: Math.max(0, track.value * track.width)
        height: track.height

        Behavior on width {
            NumberAnimation {
                duration: Look.animations ? Look.standardSeconds * 1000 : 0
            }
        }
    }

    // Narrower than its own round ends, the fill shows what the track's end leaves of it.
    Item {
        x: -track.slack
        y: -track.slack
        width: amount.width + track.slack
        height: track.height + 2 * track.slack
        clip: amount.width < 2 * groove.radius

        Squircle {
            x: track.slack
            y: track.slack
            width: Math.max(2 * groove.radius, Math.min(amount.width, track.farthest))
            height: track.height
            radius: groove.radius
            fill: Look.systemBlueColor
            visible: amount.width > 0
        }
    }
}
