import QtQuick
import Tessary
import Tessary.Look

// What the two key screens share: a card with the logo and a form on a translucent window, and the way they come in.
FocusScope {
    id: screen

    enum Field {
        None,
        ApiKey
    }

    required property KeyForm form
    required property string heading
    required property string submitText
    property string cancelText ///< no such button without it
    property string errorMessage
    property int focusedField: KeyScreen.None
    property bool showLogo: false
    property bool showWelcome: false

    signal canceled

    // The one way to submit by Return, from the field or, as the default button, from anywhere that has no use for
    // Return itself. A key held down counts once.
    Keys.onPressed: event => ReturnKey.handle(event, () => {
        if (formRoom.item?.keyField.activeFocus || form.apiKey !== "") // qmllint disable
            form.submitKey();
    })
    Component.onCompleted: showLogo = true

    Timer {
        interval: 100
        running: true
        onTriggered: screen.focusedField = KeyScreen.ApiKey
    }

    Timer {
        interval: 400
        running: true
        onTriggered: {
            screen.showWelcome = true; // with the focus, which would cut short what is said before
            announcer.say(screen.errorMessage);
        }
    }

    VisualEffectView {
        anchors.fill: parent
    }

    Announcer {
        id: announcer
    }

    // Scrolls where a large font makes the card higher than the window.
    ScrollArea {
        id: area

        anchors.fill: parent
        contentHeight: Math.max(height, card.height + 2 * card.margin)

        Panel {
            id: card

            readonly property real margin: 32

            x: (area.width - width) / 2
            y: (area.contentHeight - height) / 2
            width: 400
            height: column.height + 2 * column.y
            blur: 16
            offset: Qt.point(0, 8)
            shadowColor: Look.faded(Look.black, 0.1)
            opacity: entrance.value
            scale: 0.95 + 0.05 * entrance.value

            EaseValue {
                id: entrance

                animated: Look.animations
                seconds: 0.4
                goal: screen.showWelcome ? 1 : 0
            }

            Column {
                id: column

                x: 32
                y: 32
                width: parent.width - 2 * x
                spacing: 24

                LogoRow {
                    anchors.horizontalCenter: parent.horizontalCenter
                    shown: screen.showLogo
                }

                // By address: what the form is made of is not read before it comes.
                Later {
                    id: formRoom

                    width: parent.width
                    shown: screen.showWelcome
                    Component.onCompleted: setSource("KeyFormView.qml", {
                        screen: screen
                    })
                }
            }
        }
    }
}
