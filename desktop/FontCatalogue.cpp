#include "desktop/FontCatalogue.h"

#include <fontconfig/fontconfig.h>

namespace tessary::desktop {

FontCatalogue::FontCatalogue() : m_reader([] { FcInit(); }) {}

} // namespace tessary::desktop
