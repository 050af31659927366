import QtQuick
import Tessary.Look

// Why the last key was not taken; there only while there is something to say.
Row {
    id: line

    required property string errorMessage
    property bool shown: errorMessage !== ""

    opacity: shown ? 1 : 0
    visible: opacity > 0
    spacing: Look.spacing

    Behavior on opacity {
        EaseMotion {
            onlyOut: true
            seconds: 0.4
        }
    }

    Symbol {
        id: sign

        anchors.verticalCenter: parent.verticalCenter
        name: "exclamationmark.triangle.fill"
        color: Look.systemYellowColor
        backing: Look.yellowEdgeColor
        fontSize: Look.bodySymbol
    }

    StyledText {
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, line.width - sign.width - line.spacing)
        text: line.errorMessage
        font: Look.caption
        color: Look.secondaryLabelColor
        wrapMode: Text.Wrap
        elide: Text.ElideRight
        maximumLineCount: 4
        objectName: "errorLine"
    }
}
