import QtQuick
import Tessary

Window {
    id: window

    required property Program program
    required property UploaderApp application

    minimumWidth: 900
    minimumHeight: 600
    title: Qt.application.displayName
    visible: true
}
