#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QHash>
#include <QObject>
#include <QString>

#include <optional>

namespace tessary::desktop {

/// Tells people what happened while they looked elsewhere, by the desktop's notification server
/// (org.freedesktop.Notifications). Where none answers, nothing happens. Main thread only.
class Notifications : public QObject
{
    Q_OBJECT

public:
    struct Notification
    {
        QString title; ///< plain text, as the body
        QString body;
        bool urgent = false; ///< stays until it is answered
    };

    explicit Notifications(QDBusConnection bus = QDBusConnection::sessionBus(), QObject* parent = nullptr);

    /// Shows it in the place of the last one of that subject, a number that is not 0.
    void show(quint64 subject, const Notification& notification);

Q_SIGNALS:
    /// The person pressed the one of that subject. Not told where the server brings up a window itself.
    /// @param token by which the compositor lets a window come to the front; may be empty
    void pressed(quint64 subject, const QString& token);

private Q_SLOTS:
    void takeToken(uint id, const QString& token);
    void takeAction(uint id, const QString& action);
    void forget(uint id);

private:
    struct Abilities
    {
        bool markup;    ///< takes the body for markup
        bool pressable; ///< tells of the press
    };

    void forgetServer();
    void listen();
    void send(quint64 subject, const Notification& notification);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_server;         ///< of nothing before one has answered
    std::optional<Abilities> m_abilities; ///< of the server, once it was asked
    QHash<quint64, uint> m_ids;           ///< as the server calls the last of each subject
    QString m_token;                      ///< comes just before the action
};

} // namespace tessary::desktop
