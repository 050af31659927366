#pragma once

#include <QString>

namespace tessary::desktop::portal {

/// Where the desktop's portal is found on the session bus.
inline const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString path = QStringLiteral("/org/freedesktop/portal/desktop");

} // namespace tessary::desktop::portal
