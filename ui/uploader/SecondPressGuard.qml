import QtQuick
import QtQuick.Templates as T

// Lies on a form whose controls move when one of them is pressed, and swallows the second press of a double click that
// would hit another control than the first one did. All else goes through.
MouseArea {
    id: guard

    required property Item form
    property T.AbstractButton pressedFirst: null
    property point place

    function controlAt(item: Item, x: real, y: real): T.AbstractButton {
        for (const child of Array.from(item.children).reverse()) { // the topmost first
            if (!child.visible || !child.enabled)
                continue;
            const inside = mapToItem(child, x, y);
            if (child instanceof T.AbstractButton && child.contains(inside))
                return child;
            const found = controlAt(child, x, y);
            if (found)
                return found;
        }
        return null;
    }

    function isSecond(x: real, y: real): bool {
        const reach = Application.styleHints.startDragDistance;
        return secondTime.running && Math.abs(x - place.x) < reach && Math.abs(y - place.y) < reach;
    }

    onPressed: mouse => {
        const control = controlAt(form, mouse.x, mouse.y);
        mouse.accepted = isSecond(mouse.x, mouse.y) && pressedFirst !== null && control !== pressedFirst;
        if (!mouse.accepted) {
            pressedFirst = control;
            place = Qt.point(mouse.x, mouse.y);
            secondTime.restart();
        }
    }

    Timer {
        id: secondTime

        interval: Application.styleHints.mouseDoubleClickInterval
    }
}
