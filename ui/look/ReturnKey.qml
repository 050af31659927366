pragma Singleton
import QtQuick

// The one meaning of Return: what it presses is pressed once, however long the key is held down.
QtObject {
    /// @param act called for the first press; later ones are taken and ignored
    function handle(event: var, act: var) {
        if (event.key !== Qt.Key_Return && event.key !== Qt.Key_Enter)
            return;
        event.accepted = true;
        if (!event.isAutoRepeat)
            act();
    }
}
