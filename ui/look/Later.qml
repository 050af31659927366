import QtQuick

// Room for what is not made before it is first shown, and is kept from then on.
Loader {
    property bool shown

    visible: shown
    active: false
    onShownChanged: {
        if (shown)
            active = true;
    }
}
