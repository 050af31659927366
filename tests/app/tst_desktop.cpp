#include "app/PortalAppearance.h"
#include "app/SuspendInhibitor.h"
#include "upload/UploadActivity.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QRegularExpression>
#include <QTest>

using namespace tessary;

namespace {

/// A session service of that name that notes what it is called for.
class FakeService : public QDBusVirtualObject
{
public:
    FakeService(QDBusConnection bus, const QString& name, QVariant answer)
        : m_bus(std::move(bus)), m_name(name), m_answer(std::move(answer))
    {
        m_bus.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
        m_bus.registerService(name);
    }

    ~FakeService() override
    {
        m_bus.unregisterService(m_name);
        m_bus.unregisterObject(QStringLiteral("/"), QDBusConnection::UnregisterTree);
    }

    Q_DISABLE_COPY_MOVE(FakeService)

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override
    {
        calls.append(message.member() + u' ' + message.path());
        arguments = message.arguments();
        bus.send(message.createReply(m_answer));
        return true;
    }

    QStringList calls;
    QVariantList arguments;

private:
    QDBusConnection m_bus;
    QString m_name;
    QVariant m_answer;
};

} // namespace

/// Runs on a session bus of its own, with nobody else on it.
class DesktopTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase() { QVERIFY2(m_bus.isConnected(), "This test wants a session bus."); }

    void asksThePortalFirst();
    void fallsBackToTheSessionManager();
    void releasesWhatIsGrantedTooLate();
    void isSilentWhereNobodyOffersIt();
    void followsTheAppearance();

private:
    QDBusConnection m_bus = QDBusConnection::sessionBus();
    QDBusConnection m_desktop =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("desktop"));
};

void DesktopTest::asksThePortalFirst()
{
    FakeService portal(m_desktop, QStringLiteral("org.freedesktop.portal.Desktop"),
                       QVariant::fromValue(QDBusObjectPath(QStringLiteral("/request/1"))));
    FakeService manager(m_desktop, QStringLiteral("org.gnome.SessionManager"), 5U);
    UploadActivity activity;
    const SuspendInhibitor inhibitor(activity, m_bus);
    auto first = activity.begin(std::nullopt);
    QTRY_COMPARE(portal.calls, QStringList{QStringLiteral("Inhibit /org/freedesktop/portal/desktop")});
    QCOMPARE(portal.arguments.at(1).toUInt(), 4U);
    const auto options = qdbus_cast<QVariantMap>(portal.arguments.at(2));
    QCOMPARE(options.value(QStringLiteral("reason")).toString(), QStringLiteral("A video is being uploaded"));

    auto second = activity.begin(std::nullopt);
    first.reset();
    QTest::qWait(50);
    QCOMPARE(portal.calls.size(), 1); // held while one of them goes on
    second.reset();
    QTRY_COMPARE(portal.calls.size(), 2);
    QCOMPARE(portal.calls.last(), QStringLiteral("Close /request/1"));
    QVERIFY(manager.calls.isEmpty());
}

void DesktopTest::fallsBackToTheSessionManager()
{
    FakeService manager(m_desktop, QStringLiteral("org.gnome.SessionManager"), 5U);
    UploadActivity activity;
    const SuspendInhibitor inhibitor(activity, m_bus);
    auto entry = activity.begin(std::nullopt);
    QTRY_COMPARE(manager.calls, QStringList{QStringLiteral("Inhibit /org/gnome/SessionManager")});
    QTest::qWait(50); // the answer arrives
    entry.reset();
    QTRY_COMPARE(manager.calls.size(), 2);
    QCOMPARE(manager.calls.last(), QStringLiteral("Uninhibit /org/gnome/SessionManager"));
    QCOMPARE(manager.arguments, QVariantList{5U});
}

void DesktopTest::releasesWhatIsGrantedTooLate()
{
    FakeService portal(m_desktop, QStringLiteral("org.freedesktop.portal.Desktop"),
                       QVariant::fromValue(QDBusObjectPath(QStringLiteral("/request/2"))));
    UploadActivity activity;
    const SuspendInhibitor inhibitor(activity, m_bus);
    activity.begin(std::nullopt).reset(); // over before the question has gone out
    QTRY_COMPARE(portal.calls.size(), 2);
    QCOMPARE(portal.calls.last(), QStringLiteral("Close /request/2"));
}

void DesktopTest::isSilentWhereNobodyOffersIt()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".")));
    UploadActivity activity;
    const SuspendInhibitor inhibitor(activity, m_bus);
    auto entry = activity.begin(std::nullopt);
    QTest::qWait(100);
    entry.reset();
    QTest::qWait(50);
}

void DesktopTest::followsTheAppearance()
{
    const auto scheme = [](uint number) { return QVariant::fromValue(QDBusVariant(number)); };
    FakeService portal(m_desktop, QStringLiteral("org.freedesktop.portal.Desktop"),
                       QVariant::fromValue(QDBusVariant(scheme(1))));
    const PortalAppearance appearance(m_bus);
    QTRY_VERIFY(appearance.prefersDark());
    const auto announce = [this, &scheme](const char* key, uint number) {
        QDBusMessage change = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/portal/desktop"),
                                                         QStringLiteral("org.freedesktop.portal.Settings"),
                                                         QStringLiteral("SettingChanged"));
        change.setArguments(
            {QStringLiteral("org.freedesktop.appearance"), QString::fromLatin1(key), scheme(number)});
        m_desktop.send(change);
    };
    announce("color-scheme", 2);
    QTRY_VERIFY(!appearance.prefersDark());
    announce("accent-color", 1);
    announce("color-scheme", 1);
    QTRY_VERIFY(appearance.prefersDark());
}

QTEST_GUILESS_MAIN(DesktopTest)
#include "tst_desktop.moc"
