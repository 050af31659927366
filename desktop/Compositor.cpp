#include "desktop/Compositor.h"

#include <QGuiApplication>

#if QT_CONFIG(xcb)
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#endif

namespace tessary::desktop {
namespace {

#if QT_CONFIG(xcb)
/// Whoever composites an X screen owns a selection of this name.
bool x11Composited(xcb_connection_t* connection)
{
    struct Free
    {
        void operator()(void* reply) const { std::free(reply); }
    };

    const QByteArray name = QByteArrayLiteral("_NET_WM_CM_S0");
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> atom(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 1, static_cast<uint16_t>(name.size()), name.constData()),
        nullptr));
    // There is no owner without the name, either.
    const std::unique_ptr<xcb_get_selection_owner_reply_t, Free> owner(xcb_get_selection_owner_reply(
        connection, xcb_get_selection_owner(connection, atom ? atom->atom : xcb_atom_t{XCB_ATOM_NONE}),
        nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}
#endif

} // namespace

bool isComposited()
{
#if QT_CONFIG(xcb)
    // The windowless platform offers the interface too, over no connection.
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 != nullptr && x11->connection() != nullptr) {
        return x11Composited(x11->connection());
    }
#endif
    return QGuiApplication::platformName().startsWith(QLatin1StringView("wayland"));
}

} // namespace tessary::desktop
