#include "look/Desktop.h"

#include <QEvent>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QPalette>

#include <algorithm>
#include <array>

#if QT_CONFIG(xcb)
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#endif

namespace tessary::look {
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
    if (!atom || atom->atom == XCB_ATOM_NONE) {
        return false;
    }
    const std::unique_ptr<xcb_get_selection_owner_reply_t, Free> owner(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, atom->atom), nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}
#endif

bool desktopComposites()
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

} // namespace

Desktop::Desktop(QObject* parent)
    : QObject(parent), m_composited(desktopComposites()), m_portal(QDBusConnection::sessionBus())
{
    qGuiApp->installEventFilter(this);
    connect(&m_portal, &PortalAppearance::prefersDarkChanged, this, &Desktop::paletteChanged);
}

bool Desktop::dark() const
{
    return m_portal.prefersDark() || QGuiApplication::palette().color(QPalette::Window).lightnessF() < 0.5F;
}

QColor Desktop::accent()
{
    return QGuiApplication::palette().color(QPalette::Active, QPalette::Highlight);
}

QColor Desktop::textOnAccent()
{
    return QGuiApplication::palette().color(QPalette::Active, QPalette::HighlightedText);
}

QFont Desktop::font()
{
    return QGuiApplication::font();
}

QFont Desktop::scaled(const QFont& font, qreal factor, int weight)
{
    QFont result(font);
    if (font.pointSizeF() > 0) {
        result.setPointSizeF(font.pointSizeF() * factor);
    } else {
        result.setPixelSize(qRound(font.pixelSize() * factor));
    }
    result.setWeight(static_cast<QFont::Weight>(weight));
    return result;
}

QFont Desktop::sized(const QFont& font, qreal points, int weight)
{
    QFont result(font);
    result.setPixelSize(qRound(points)); // a point of the layout, not of print
    result.setWeight(static_cast<QFont::Weight>(weight));
    return result;
}

QFont Desktop::monospaced(const QFont& font)
{
    QFont result(font);
    result.setFamilies(QFontDatabase::systemFont(QFontDatabase::FixedFont).families());
    result.setStyleHint(QFont::Monospace);
    return result;
}

QFont Desktop::rounded(const QFont& font)
{
    static const std::array<QString, 3> families{QStringLiteral("Nunito"), QStringLiteral("Quicksand"),
                                                 QStringLiteral("Varela Round")};
    const auto* found = std::find_if(families.begin(), families.end(),
                                     [](const auto& name) { return QFontDatabase::hasFamily(name); });
    QFont result(font);
    if (found != families.end()) {
        result.setFamilies({*found});
    }
    return result;
}

void Desktop::lookForCompositor()
{
    m_composited = desktopComposites();
    Q_EMIT compositedChanged();
}

bool Desktop::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == qGuiApp && event->type() == QEvent::ApplicationPaletteChange) {
        Q_EMIT paletteChanged();
    } else if (watched == qGuiApp && event->type() == QEvent::ApplicationFontChange) {
        Q_EMIT fontChanged();
    }
    return false;
}

} // namespace tessary::look
