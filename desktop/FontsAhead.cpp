#include "desktop/FontsAhead.h"

#include <clocale>
#include <cstdlib>
#include <fontconfig/fontconfig.h>

namespace tessary::desktop {

std::jthread readFontsAhead()
{
    if (std::getenv("DESKTOP_STARTUP_ID") != nullptr) { // NOLINT(concurrency-mt-unsafe): no thread yet
        return {};
    }
    // Else the application object would set it while numbers of the font configuration are read.
    std::setlocale(LC_ALL, ""); // NOLINT(concurrency-mt-unsafe): no thread yet
    return std::jthread(FcInit);
}

} // namespace tessary::desktop
