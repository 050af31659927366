import QtQuick
import QtQuick.Layouts
import Tessary
import Tessary.Look

// The strip on top: whose library it is, and the way to change that; details shown or hidden.
Rectangle {
    id: header

    required property FileUploaderState uploader
    required property SessionManager sessionManager
    required property AppManager appManager

    implicitHeight: row.implicitHeight + 2 * Look.padding
    color: Look.controlBackgroundColor

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.margins: Look.padding
        spacing: Look.spacing

        WorkspaceBlock {
            Layout.fillWidth: true
            Layout.maximumWidth: implicitWidth
            isHeaderHovered: header.uploader.isHeaderHovered
            workspaceName: header.sessionManager.workspaceName
            known: header.sessionManager.hasWorkspace
            onHoveredChanged: header.uploader.isHeaderHovered = hovered
            onClicked: header.appManager.editingAPIKey = true
        }

        Item {
            Layout.fillWidth: true
        }

        SymbolButton {
            objectName: "detailsButton"
            padding: 8
            ringRadius: height / 2
            text: header.uploader.showDetails ? qsTr("Hide details") : qsTr("Show details")
            tip: text
            symbol: header.uploader.showDetails ? "eye.slash.fill" : "eye.fill"
            symbolColor: Look.systemBlueColor
            symbolSize: Look.wideSymbol
            background: Squircle {
                radius: width / 2
                fill: Look.controlBackgroundColor
            }
            onClicked: header.uploader.showDetails = !header.uploader.showDetails
        }
    }
}
