#include "desktop/Notifications.h"

#include "desktop/Ask.h"

#include <QVariantMap>
#include <QVersionNumber>

#include <utility>

namespace tessary::desktop {
namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");
const QString applicationName = QStringLiteral("Tessary Uploader");
const QString applicationId = QStringLiteral("tessary_macos_uploader"); // of its icon and its desktop entry
const QString defaultAction = QStringLiteral("default");

QDBusMessage serverCall(const QString& method)
{
    return QDBusMessage::createMethodCall(service, path, service, method);
}

/// Whether the server brings up a window itself when a notification without actions is pressed, and does not
/// let the program do so: GNOME Shell hands out tokens for that since 46.
/// @param information name, maker and version of the server
bool isOpener(const QVariantList& information)
{
    constexpr int firstWithTokens = 46;
    return information.value(0).toString() == QLatin1StringView("gnome-shell") &&
           QVersionNumber::fromString(information.value(2).toString()).majorVersion() < firstWithTokens;
}

} // namespace

Notifications::Notifications(QDBusConnection bus, QObject* parent) : QObject(parent), m_bus(std::move(bus)) {}

void Notifications::show(quint64 subject, const Notification& notification)
{
    if (!m_bus.isConnected()) {
        return;
    }
    if (m_abilities) {
        send(subject, notification);
        return;
    }
    ask(m_bus, serverCall(QStringLiteral("GetCapabilities")), this,
        [this, subject, notification](const QDBusMessage& answer) {
            if (answer.type() != QDBusMessage::ReplyMessage) {
                return; // asked again the next time: a server may come
            }
            const QStringList capabilities = answer.arguments().value(0).toStringList();
            ask(m_bus, serverCall(QStringLiteral("GetServerInformation")), this,
                [this, subject, notification, capabilities](const QDBusMessage& information) {
                    listen();
                    m_abilities = {capabilities.contains(QStringLiteral("body-markup")),
                                   capabilities.contains(QStringLiteral("actions")) &&
                                       !isOpener(information.arguments())};
                    send(subject, notification);
                });
        });
}

void Notifications::listen()
{
    if (!m_server.watchedServices().isEmpty()) {
        return;
    }
    m_server.setConnection(m_bus);
    m_server.addWatchedService(service);
    connect(&m_server, &QDBusServiceWatcher::serviceOwnerChanged, this, &Notifications::forgetServer);
    m_bus.connect(service, path, service, QStringLiteral("ActivationToken"), this,
                  SLOT(takeToken(uint, QString)));
    m_bus.connect(service, path, service, QStringLiteral("ActionInvoked"), this,
                  SLOT(takeAction(uint, QString)));
    m_bus.connect(service, path, service, QStringLiteral("NotificationClosed"), this, SLOT(forget(uint)));
}

void Notifications::send(quint64 subject, const Notification& notification)
{
    constexpr uchar normal = 1;
    constexpr uchar critical = 2;
    constexpr int asLongAsTheServerLikes = -1;
    constexpr int untilItIsClosed = 0;
    QStringList actions;
    if (m_abilities->pressable) {
        actions = {defaultAction, QStringLiteral("Show")};
    }
    const QVariantMap hints{
        {QStringLiteral("desktop-entry"), applicationId},
        {QStringLiteral("urgency"), QVariant::fromValue(notification.urgent ? critical : normal)},
    };
    QDBusMessage notify = serverCall(QStringLiteral("Notify"));
    notify.setArguments({applicationName, m_ids.value(subject), applicationId, notification.title,
                         m_abilities->markup ? notification.body.toHtmlEscaped() : notification.body, actions,
                         hints, notification.urgent ? untilItIsClosed : asLongAsTheServerLikes});
    ask(m_bus, notify, this, [this, subject](const QDBusMessage& answer) {
        if (answer.type() == QDBusMessage::ReplyMessage) {
            m_ids.insert(subject, answer.arguments().value(0).toUInt());
        }
    });
}

void Notifications::takeToken(uint id, const QString& token)
{
    if (m_ids.key(id, 0) != 0) {
        m_token = token;
    }
}

void Notifications::takeAction(uint id, const QString& action)
{
    const quint64 subject = m_ids.key(id, 0);
    if (subject != 0 && action == defaultAction) {
        Q_EMIT pressed(subject, std::exchange(m_token, QString()));
    }
}

void Notifications::forget(uint id)
{
    m_ids.removeIf([id](const auto shown) { return shown.value() == id; });
}

void Notifications::forgetServer()
{
    m_abilities.reset();
    m_ids.clear();
}

} // namespace tessary::desktop
