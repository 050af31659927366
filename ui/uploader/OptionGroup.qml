import QtQuick

// Options of which one is selected, in columns. One stop for Tab, the selected one; the arrow keys, Home and End move the
// focus and choose nothing, since choosing has effects.
FocusScope {
    id: group

    required property string label
    default property alias options: grid.data
    property alias columns: grid.columns
    property alias spacing: grid.spacing

    /// @param step how far; beyond the ends is at the end
    function moveFocus(step: int) {
        const all = Array.from(grid.visibleChildren).filter(child => child instanceof OptionButton);
        const at = all.findIndex(option => option.activeFocus) + step;
        all[Math.max(0, Math.min(at, all.length - 1))].forceActiveFocus(Qt.TabFocusReason);
    }

    implicitHeight: grid.implicitHeight
    Accessible.role: Accessible.Grouping
    Accessible.name: label
    Keys.onUpPressed: moveFocus(-1)
    Keys.onLeftPressed: moveFocus(-1)
    Keys.onDownPressed: moveFocus(1)
    Keys.onRightPressed: moveFocus(1)
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_Home || event.key === Qt.Key_End;
        if (event.accepted)
            moveFocus(event.key === Qt.Key_Home ? -grid.children.length : grid.children.length);
    }

    Grid {
        id: grid

        columns: 1
    }
}
