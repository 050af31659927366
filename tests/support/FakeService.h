#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QTest>
#include <QVariant>

#include <utility>

namespace tessary::testing {

/// A call that is answered in its turn and not noted.
inline const QString settling = "Settle";

/// A session service of those names that notes what it is called for.
class FakeService : public QDBusVirtualObject
{
public:
    FakeService(QDBusConnection bus, QStringList names, QVariant answer)
        : m_bus(std::move(bus)), m_names(std::move(names)), m_answer(std::move(answer))
    {
        m_bus.registerVirtualObject("/", this, QDBusConnection::SubPath);
        for (const QString& name : m_names) {
            m_bus.registerService(name);
        }
    }

    ~FakeService() override
    {
        for (const QString& name : m_names) {
            m_bus.unregisterService(name);
        }
        m_bus.unregisterObject("/", QDBusConnection::UnregisterTree);
    }

    Q_DISABLE_COPY_MOVE(FakeService)

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override
    {
        if (message.member() != settling) {
            calls.append(message.interface() + u'.' + message.member() + u' ' + message.path());
            arguments = message.arguments();
        }
        const QVariant answer = answers.value(message.member(), m_answer);
        bus.send(message.createReply(answer.typeId() == QMetaType::QVariantList ? answer.toList()
                                                                                : QVariantList{answer}));
        return true;
    }

    /// As the portal tells of a setting that changes.
    void announce(const QString& group, const QString& key, const QVariant& value)
    {
        QDBusMessage change = QDBusMessage::createSignal("/org/freedesktop/portal/desktop",
                                                         "org.freedesktop.portal.Settings", "SettingChanged");
        change.setArguments({group, key, QVariant::fromValue(QDBusVariant(value))});
        m_bus.send(change);
    }

    QHash<QString, QVariant> answers; ///< of some methods, or lists of such; all others get the one answer
    QStringList calls;
    QVariantList arguments;

private:
    QDBusConnection m_bus;
    QStringList m_names;
    QVariant m_answer;
};

/// Waits until what was sent to the desktop before has been answered, and what it has sent has come in.
[[nodiscard]] inline bool settled(const QDBusConnection& bus, const QDBusConnection& desktop)
{
    const QDBusPendingCall ping =
        bus.asyncCall(QDBusMessage::createMethodCall(desktop.baseService(), "/", "test.Settling", settling));
    const bool answered = QTest::qWaitFor([&ping] { return ping.isFinished(); });
    QTest::qWait(0);
    return answered;
}

} // namespace tessary::testing
