pragma ComponentBehavior: Bound
import QtQuick
import Tessary

// The video's name, format and perspective.
Column {
    id: section

    required property FileUploaderState uploader

    Column {
        width: section.width
        spacing: 16

        StyledText {
            width: section.width
            text: qsTr("Video Information")
            font: Look.headline
            elide: Text.ElideRight
            Accessible.role: Accessible.Heading
        }

        Column {
            width: section.width
            spacing: 6

            Caption {
                width: section.width
                text: qsTr("Video Name")
            }

            NameField {
                width: section.width
                uploader: section.uploader
            }
        }

        Column {
            width: section.width
            spacing: 6

            Caption {
                width: section.width
                text: qsTr("File Format")
            }

            Column {
                width: section.width
                spacing: 8
                Accessible.role: Accessible.Grouping
                Accessible.name: qsTr("File Format")

                Repeater {
                    model: section.uploader.formats

                    FormatOption {
                        width: section.width
                        uploader: section.uploader
                    }
                }
            }
        }
    }

    Reveal {
        width: section.width
        shown: section.uploader.offersPerspective
        gap: 16

        Column {
            width: section.width
            spacing: 6

            Caption {
                width: section.width
                text: qsTr("Perspective")
            }

            Row {
                width: section.width
                Accessible.role: Accessible.Grouping
                Accessible.name: qsTr("Perspective")

                Repeater {
                    model: section.uploader.perspectives

                    PerspectiveOption {
                        width: section.width / 3
                        uploader: section.uploader
                    }
                }
            }
        }
    }
}
