#include "desktop/PortalAppearance.h"

#include "desktop/Ask.h"
#include "desktop/Portal.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>

#include <algorithm>

namespace tessary::desktop {
namespace {

using Settings = QMap<QString, QVariantMap>;

const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString accessibility = QStringLiteral("org.gnome.desktop.a11y.interface");
const QString desktopInterface = QStringLiteral("org.gnome.desktop.interface");

/// In the portal's settings 0 is no preference; of the appearance, 2 is light.
constexpr uint dark = 1;
constexpr uint moreContrast = 1;

} // namespace

PortalAppearance::PortalAppearance(QDBusConnection bus, QObject* parent)
    : QObject(parent), m_bus(std::move(bus))
{
    if (!m_bus.isConnected()) {
        return;
    }
    qRegisterMetaType<QDBusVariant>(); // by its name, or the first one to connect would not be connected
    m_bus.connect(portal::service, portal::path, settingsInterface, QStringLiteral("SettingChanged"), this,
                  SLOT(takeSetting(QString, QString, QDBusVariant)));
    QDBusMessage question = QDBusMessage::createMethodCall(portal::service, portal::path, settingsInterface,
                                                           QStringLiteral("ReadAll"));
    question.setArguments({QStringList{appearance, accessibility, desktopInterface}});
    ask(m_bus, question, this, [this](const QDBusMessage& answer) {
        if (answer.type() == QDBusMessage::ReplyMessage &&
            answer.signature() == QLatin1StringView("a{sa{sv}}")) {
            m_settings = qdbus_cast<Settings>(answer.arguments().constFirst());
            Q_EMIT changed();
        }
    });
}

bool PortalAppearance::prefersDark() const
{
    return m_settings[appearance].value(QStringLiteral("color-scheme")).toUInt() == dark;
}

bool PortalAppearance::highContrast() const
{
    return m_settings[appearance].value(QStringLiteral("contrast")).toUInt() == moreContrast ||
           m_settings[accessibility].value(QStringLiteral("high-contrast")).toBool();
}

bool PortalAppearance::animations() const
{
    return m_settings[desktopInterface].value(QStringLiteral("enable-animations"), true) != QVariant(false);
}

double PortalAppearance::textScale() const
{
    constexpr double smallest = 0.5;
    constexpr double largest = 3;
    const double scale = m_settings[desktopInterface].value(QStringLiteral("text-scaling-factor")).toDouble();
    return scale > 0 ? std::clamp(scale, smallest, largest) : 1; // also when it is not a number
}

void PortalAppearance::takeSetting(const QString& group, const QString& key, const QDBusVariant& value)
{
    if (group == appearance || group == accessibility || group == desktopInterface) {
        m_settings[group][key] = value.variant();
        if (group == desktopInterface && key == QLatin1StringView("font-name")) {
            m_changedFont = value.variant().toString();
        }
        Q_EMIT changed();
    }
}

} // namespace tessary::desktop
