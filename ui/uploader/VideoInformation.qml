pragma ComponentBehavior: Bound
import QtQuick
import Tessary
import Tessary.Look

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

            OptionGroup {
                id: formats

                width: section.width
                spacing: 8
                label: qsTr("File Format")

                Repeater {
                    model: section.uploader.formats

                    FormatOption {
                        width: section.width
                        group: formats
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

            OptionGroup {
                id: perspectives

                /// Equal shares as far as whole device pixels allow.
                function edge(index: int): real {
                    return Look.snapped(index * width / columns, Screen.devicePixelRatio);
                }

                width: section.width
                columns: 3
                label: qsTr("Perspective")

                Repeater {
                    model: section.uploader.perspectives

                    PerspectiveOption {
                        width: perspectives.edge(index + 1) - perspectives.edge(index)
                        group: perspectives
                        uploader: section.uploader
                    }
                }
            }
        }
    }
}
