import QtQuick
import Tessary.Look

// The one text item of the program. What it shows may come from outside and is never markup.
Text {
    textFormat: Text.PlainText
    font: Look.body
    color: Look.labelColor
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: text === ""
}
