#include "desktop/FontsAhead.h"

#include <clocale>
#include <cstdlib>
#include <fontconfig/fontconfig.h>
#include <system_error>

namespace tessary::desktop {

std::jthread readFontsAhead()
{
    if (std::getenv("DESKTOP_STARTUP_ID") != nullptr) { // NOLINT(concurrency-mt-unsafe): no thread yet
        return {};
    }
    // Else the application object would set it while numbers of the font configuration are read.
    std::setlocale(LC_ALL, ""); // NOLINT(concurrency-mt-unsafe): no thread yet
    try {
        return std::jthread(FcInit);
    } catch (
        const std::system_error&) { // no thread to be had: the toolkit reads them, as it does without this
        return {};
    }
}

} // namespace tessary::desktop
