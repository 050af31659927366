import QtQuick
import Tessary

StyledText {
    font: Look.subheadline
    color: Look.secondaryLabelColor
    elide: Text.ElideRight
}
