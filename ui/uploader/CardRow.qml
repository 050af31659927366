import QtQuick
import Tessary
import Tessary.Look

// The two cards, as equally wide as whole device pixels allow, with a hairline midway between them.
Item {
    id: row

    required property FileUploaderState uploader
    readonly property real spacing: 5
    readonly property real share: Look.snapped((width - divider.width) / 2 - spacing, Screen.devicePixelRatio)

    FormCard {
        id: formCard

        x: Look.padding
        y: Look.padding
        width: row.share - 2 * Look.padding
        height: row.height - 2 * Look.padding
        uploader: row.uploader
    }

    Squircle {
        id: divider

        objectName: "cardDivider"
        x: row.share + row.spacing
        y: 2 * Look.padding
        width: 1
        height: row.height - 4 * Look.padding
        fill: Look.separatorColor
    }

    LogCard {
        x: divider.x + divider.width + row.spacing + Look.padding
        y: Look.padding
        width: row.width - x - Look.padding
        height: row.height - 2 * Look.padding
        uploader: row.uploader
        // The form, which rests while an upload goes on, may hear of its end after this.
        onFocusLeft: visibly => Qt.callLater(formCard.focusUploadButton, visibly)
    }
}
