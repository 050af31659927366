#include "app/PortalAppearance.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>

namespace tessary {
namespace {

const QString portal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settings = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");

/// 0 is no preference and 2 is light.
constexpr uint dark = 1;

} // namespace

PortalAppearance::PortalAppearance(QDBusConnection bus, QObject* parent)
    : QObject(parent), m_bus(std::move(bus))
{
    if (!m_bus.isConnected()) {
        return;
    }
    m_bus.connect(portal, portalPath, settings, QStringLiteral("SettingChanged"), this,
                  SLOT(takeSetting(QString, QString, QDBusVariant)));
    QDBusMessage question =
        QDBusMessage::createMethodCall(portal, portalPath, settings, QStringLiteral("Read"));
    question.setArguments({appearance, colorScheme});
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusMessage answer = watcher->reply();
        if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty()) {
            takeColorScheme(answer.arguments().constFirst());
        }
    });
}

void PortalAppearance::takeSetting(const QString& group, const QString& key, const QDBusVariant& value)
{
    if (group == appearance && key == colorScheme) {
        takeColorScheme(value.variant());
    }
}

void PortalAppearance::takeColorScheme(const QVariant& value)
{
    QVariant scheme = value; // the portal wraps the answer to a question twice
    while (scheme.metaType() == QMetaType::fromType<QDBusVariant>()) {
        scheme = scheme.value<QDBusVariant>().variant();
    }
    const bool prefersDark = scheme.toUInt() == dark;
    if (prefersDark != m_prefersDark) {
        m_prefersDark = prefersDark;
        Q_EMIT prefersDarkChanged();
    }
}

} // namespace tessary
