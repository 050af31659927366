import QtQuick
import Tessary.Look

// How much is uploaded. The fill is as wide as `progress` says, also beyond the track; what is no number is nothing.
Rectangle {
    id: track

    required property double progress
    required property string words ///< how far it is and how long it will take; empty while that is not known
    readonly property real value: isFinite(progress) ? progress : 0
    readonly property real farthest: 1e5 ///< beyond any screen; wider is not drawable

    objectName: "progressBar"
    implicitWidth: 100
    implicitHeight: 8
    radius: 4
    color: Look.separatorColor
    Accessible.role: Accessible.ProgressBar
    Accessible.name: qsTr("Upload progress: %1 %").arg(Math.round(value * 100))
    Accessible.description: words

    HoverHandler {
        id: pointer
    }

    Tip {
        text: track.words
        shown: pointer.hovered && track.words !== ""
    }

    // Narrower than its own round ends, the fill shows what the track's end leaves of it.
    Item {
        objectName: "progressFill"
        width: Math.max(0, Math.min(track.value * track.width, track.farthest))
        height: track.height
        clip: width < 2 * track.radius

        Rectangle {
            width: Math.max(parent.width, 2 * track.radius)
            height: parent.height
            radius: track.radius
            color: Look.systemBlueColor
        }

        Behavior on width {
            NumberAnimation {
                duration: Look.animations ? Look.standardSeconds * 1000 : 0
            }
        }
    }
}
