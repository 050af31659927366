import QtQuick
import Tessary.Look

// How much is uploaded. The fill is as wide as `progress` says, also beyond the track; what is no number is nothing.
ProgressItem {
    id: track

    required property double progress
    required property string words ///< how far it is and how long it will take; empty while that is not known
    readonly property real value: isFinite(progress) ? progress : 0
    readonly property real farthest: 8000 ///< beyond any screen; more is not drawn
    readonly property real reach: Math.max(0, value * width) ///< of the fill, once it has arrived
    readonly property real hardly: 2 ///< too short a way to be animated, which in a long upload all of them are
    readonly property real slack: 1 ///< what lies on whole device pixels may lie beside its place by less

    objectName: "progressBar"
    implicitWidth: 100
    implicitHeight: 8
    label: qsTr("Upload progress")
    description: words
    percent: Math.round(Math.max(0, Math.min(value, 1)) * 100)
    Accessible.role: Accessible.ProgressBar
    Component.onCompleted: amount.width = reach
    onReachChanged: {
        way.stop();
        if (Look.animations && InView.exposed && Math.abs(reach - amount.width) > hardly) {
            way.to = reach;
            way.start();
        } else {
            amount.width = reach;
        }
    }

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
        height: track.height
    }

    NumberAnimation {
        id: way

        target: amount
        property: "width"
        duration: Look.standardSeconds * 1000
    }

    // Narrower than its own round ends, the fill shows what the track's end leaves of it. It grows by whole pixels: of a
    // long upload there is nothing new to be seen for minutes, and no frame is drawn for less.
    Item {
        id: fill

        readonly property real drawn: Math.round(amount.width * Screen.devicePixelRatio) / Screen.devicePixelRatio

        x: -track.slack
        y: -track.slack
        width: drawn + track.slack
        height: track.height + 2 * track.slack
        clip: drawn < 2 * groove.radius

        Squircle {
            x: track.slack
            y: track.slack
            width: Math.max(2 * groove.radius, Math.min(fill.drawn, track.farthest))
            height: track.height
            radius: groove.radius
            fill: Look.systemBlueColor
            visible: fill.drawn > 0
        }
    }
}
