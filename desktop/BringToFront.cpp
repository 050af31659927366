#include "desktop/BringToFront.h"

#include <QWindow>

namespace tessary::desktop {

void bringToFront(QWindow& window, const QString& token)
{
    // The platform's plugin takes the token from there. It must not reach a tool.
    constexpr const char* variable = "XDG_ACTIVATION_TOKEN";
    if (!token.isEmpty()) {
        qputenv(variable, token.toUtf8());
    }
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.raise();
    window.requestActivate();
    qunsetenv(variable);
}

} // namespace tessary::desktop
