#include "desktop/Notifications.h"

#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
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
    return information.size() > 2 && information.at(0).toString() == QLatin1StringView("gnome-shell") &&
           QVersionNumber::fromString(information.at(2).toString()).majorVersion() < firstWithTokens;
}

} // namespace

Notifications::Notifications(QDBusConnection bus, QObject* parent) : QObject(parent), m_bus(std::move(bus)) {}

void Notifications::show(quint64 subject, const Notification& notification)
{
    if (!m_bus.isConnected()) {
        return;
    }
    if (m_capabilities) {
        send(subject, notification);
        return;
    }
    call(serverCall(QStringLiteral("GetCapabilities")),
         [this, subject, notification](const QDBusMessage& answer) {
             if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty()) {
                 return; // asked again the next time: a server may come
             }
             const QStringList capabilities = answer.arguments().constFirst().toStringList();
             call(serverCall(QStringLiteral("GetServerInformation")),
                  [this, subject, notification, capabilities](const QDBusMessage& information) {
                      listen();
                      m_capabilities = capabilities;
                      m_pressable = capabilities.contains(QStringLiteral("actions")) &&
                                    !isOpener(information.arguments());
                      send(subject, notification);
                  });
         });
}

void Notifications::call(const QDBusMessage& message, std::function<void(const QDBusMessage&)> take)
{
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, take = std::move(take)] {
        watcher->deleteLater();
        take(watcher->reply());
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
    const bool markup = m_capabilities->contains(QStringLiteral("body-markup"));
    QStringList actions;
    if (m_pressable) {
        actions = {defaultAction, QStringLiteral("Show")};
    }
    const QVariantMap hints{
        {QStringLiteral("desktop-entry"), applicationId},
        {QStringLiteral("urgency"), QVariant::fromValue(notification.urgent ? critical : normal)},
    };
    QDBusMessage notify = serverCall(QStringLiteral("Notify"));
    notify.setArguments({applicationName, m_ids.value(subject), applicationId, notification.title,
                         markup ? notification.body.toHtmlEscaped() : notification.body, actions, hints,
                         notification.urgent ? untilItIsClosed : asLongAsTheServerLikes});
    call(notify, [this, subject](const QDBusMessage& answer) {
        if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty()) {
            m_ids.insert(subject, answer.arguments().constFirst().toUInt());
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
    m_ids.remove(m_ids.key(id, 0));
}

void Notifications::forgetServer()
{
    m_capabilities.reset();
    m_ids.clear();
}

} // namespace tessary::desktop
