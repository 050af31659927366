#pragma once

#include <QString>

class QWindow;

namespace tessary::desktop {

/// Shows the window above the others, as far as the desktop lets it.
/// @param token of the action that asks for it, for compositors that want one; may be empty
void bringToFront(QWindow& window, const QString& token);

} // namespace tessary::desktop
