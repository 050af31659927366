#pragma once

namespace tessary::desktop {

/// Whether a window may let the desktop behind it show through: always on Wayland, on X11 while somebody owns
/// the screen's compositing selection. Asks the X server and waits for its answer; needs a QGuiApplication.
[[nodiscard]] bool isComposited();

} // namespace tessary::desktop
