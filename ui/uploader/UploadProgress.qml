import QtQuick
import Tessary.Look

// How much is uploaded. The fill is as wide as `progress` says, also beyond the track; what is no number is nothing.
ProgressItem {
    id: track

    required property double progress
    readonly property real value: isFinite(progress) ? progress : 0
    readonly property real farthest: 1e5 ///< beyond any screen; wider is not drawable

    objectName: "progressBar"
    implicitWidth: 100
    implicitHeight: 8
    label: qsTr("Upload progress")
    percent: Math.round(Math.max(0, Math.min(value, 1)) * 100)
    Accessible.role: Accessible.ProgressBar

    Rectangle {
        id: groove

        anchors.fill: parent
        radius: 4
        color: Look.separatorColor
    }

    // Narrower than its own round ends, the fill shows what the track's end leaves of it.
    Item {
        objectName: "progressFill"
        width: Math.max(0, Math.min(track.value * track.width, track.farthest))
        height: track.height
        clip: width < 2 * groove.radius

        Rectangle {
            width: Math.max(parent.width, 2 * groove.radius)
            height: parent.height
            radius: groove.radius
            color: Look.systemBlueColor
        }

        Behavior on width {
            NumberAnimation {
                duration: Look.animations ? Look.standardSeconds * 1000 : 0
            }
        }
    }
}
