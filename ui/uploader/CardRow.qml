import QtQuick
import Tessary

// The two cards, equally wide, with a hairline between them.
Item {
    id: row

    required property FileUploaderState uploader
    readonly property real spacing: 5
    readonly property real share: Math.floor((width - 2 * spacing - divider.width) / 2) // whole points stay crisp

    FormCard {
        x: Look.padding
        y: Look.padding
        width: row.share - 2 * Look.padding
        height: row.height - 2 * Look.padding
        uploader: row.uploader
    }

    Rectangle {
        id: divider

        x: row.share + row.spacing
        y: 2 * Look.padding
        width: 1
        height: row.height - 4 * Look.padding
        color: Look.separatorColor
    }

    LogCard {
        x: row.width - row.share + Look.padding
        y: Look.padding
        width: row.share - 2 * Look.padding
        height: row.height - 2 * Look.padding
        uploader: row.uploader
    }
}
