import QtQuick
import Tessary.Look

// A vertical scroll area as a desktop has it: the wheel, the touch screen and the bar scroll it, a mouse drag does
// not. It shows what the keyboard moves to.
Item {
    id: area

    default property alias content: flickable.flickableData
    property alias contentHeight: flickable.contentHeight
    property alias contentY: flickable.contentY
    property real barInset: 12 ///< of the bar's ends, clear of round corners
    readonly property real lastY: Math.max(0, contentHeight - height)

    function scrollTo(y: real) {
        flickable.contentY = Math.max(0, Math.min(y, lastY));
    }

    function scrollToEnd() {
        scrollTo(lastY);
    }

    /// @param rect in the content's coordinates
    function show(rect: rect) {
        if (rect.y < contentY)
            scrollTo(rect.y);
        else if (rect.y + rect.height > contentY + height)
            scrollTo(rect.y + rect.height - height);
    }

    function holdsItem(item: Item): bool {
        while (item && item !== flickable.contentItem)
            item = item.parent;
        return item !== null;
    }

    onLastYChanged: {
        if (contentY > lastY)
            scrollToEnd();
    }
    Keys.onPressed: event => {
        const page = event.key === Qt.Key_PageDown ? 1 : event.key === Qt.Key_PageUp ? -1 : 0;
        if (page !== 0) {
            scrollTo(contentY + page * height * 0.9);
            event.accepted = true;
        }
    }

    Flickable {
        id: flickable

        anchors.fill: parent
        contentWidth: width
        interactive: false
        clip: area.lastY > 0 // each kind of what is drawn would else be drawn in two ways
        boundsBehavior: Flickable.StopAtBounds
    }

    // There is nothing of the bar while all of the content is in view.
    Later {
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.right: parent.right
        shown: area.height > 0 && area.lastY > 0 // there is no height before the window has its own
        Component.onCompleted: setSource("ScrollAreaBar.qml", {
            area: area,
            flickable: flickable
        })
    }

    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: event => {
            const points = event.pixelDelta.y !== 0 ? event.pixelDelta.y : event.angleDelta.y / 120 * 60;
            area.scrollTo(area.contentY - points);
        }
    }

    DragHandler {
        property real from: 0

        acceptedDevices: PointerDevice.TouchScreen
        target: null
        xAxis.enabled: false
        onActiveChanged: from = area.contentY
        onTranslationChanged: area.scrollTo(from - translation.y)
    }

    Connections {
        function onActiveFocusItemChanged() {
            const item = area.Window.activeFocusItem;
            if (item && item.height <= area.height && area.holdsItem(item))
                area.show(item.mapToItem(flickable.contentItem, 0, -8, item.width, item.height + 16));
        }

        target: area.Window.window
    }
}
