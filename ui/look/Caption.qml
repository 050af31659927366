import QtQuick
import Tessary.Look

StyledText {
    font: Look.subheadline
    color: Look.secondaryLabelColor
    elide: Text.ElideRight
}
