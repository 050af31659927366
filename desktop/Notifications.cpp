#include "desktop/Notifications.h"

#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QVariantMap>

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
    auto* watcher =
        new QDBusPendingCallWatcher(m_bus.asyncCall(serverCall(QStringLiteral("GetCapabilities"))), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, subject, notification] {
        watcher->deleteLater();
        const QDBusMessage answer = watcher->reply();
        if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty()) {
            return; // asked again the next time: a server may come
        }
        listen();
        m_capabilities = answer.arguments().constFirst().toStringList();
        send(subject, notification);
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
    if (m_capabilities->contains(QStringLiteral("actions"))) {
        actions = {defaultAction, QStringLiteral("Show")};
    }
    const QVariantMap hints{
        {QStringLiteral("desktop-entry"), applicationId},
        {QStringLiteral("urgency"), QVariant::fromValue(notification.urgent ? critical : normal)},
    };
    QDBusMessage call = serverCall(QStringLiteral("Notify"));
    call.setArguments({applicationName, m_ids.value(subject), applicationId, notification.title,
                       markup ? notification.body.toHtmlEscaped() : notification.body, actions, hints,
                       notification.urgent ? untilItIsClosed : asLongAsTheServerLikes});
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, subject] {
        watcher->deleteLater();
        const QDBusMessage answer = watcher->reply();
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
