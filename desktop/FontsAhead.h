#pragma once

#include <thread>

namespace tessary::desktop {

/// Has the list of the installed fonts read in a thread of its own, while the toolkit connects to the
/// display. Called in main() before the application object is made; the thread is to have ended when that is
/// there.
///
/// The thread reads the environment. Where an X11 launcher put a startup ID into it, which the toolkit takes
/// out again meanwhile, nothing is read ahead, and what is returned is no thread; nor is it one where none
/// can be started.
[[nodiscard]] std::jthread readFontsAhead();

} // namespace tessary::desktop
