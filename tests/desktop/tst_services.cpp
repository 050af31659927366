#include "desktop/CaretRest.h"
#include "desktop/PortalAppearance.h"
#include "desktop/PortalFileChooser.h"
#include "desktop/SuspendInhibitor.h"
#include "tests/support/FakeService.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QStyleHints>
#include <QTest>
#include <QTimer>
#include <QWindow>

using namespace tessary::desktop;
using namespace tessary::testing;

class DesktopTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase() { QVERIFY2(m_bus.isConnected(), "This test wants a session bus."); }

    void keepsTheSessionAwake_data();
    void keepsTheSessionAwake();
    void releasesWhatIsGrantedTooLate();
    void isSilentWhereNobodyOffersIt();
    void followsTheAppearance_data();
    void followsTheAppearance();
    void thePortalsDialogIsForWhoHasNoneOfTheirOwn_data();
    void thePortalsDialogIsForWhoHasNoneOfTheirOwn();
    void theCaretRestsUntilItIsWoken_data();
    void theCaretRestsUntilItIsWoken();

private:
    /// @param rounds one for each question that the answer to another one lets go out
    void settle(int rounds = 1)
    {
        while (rounds-- > 0) {
            QVERIFY(settled(m_bus, m_desktop));
        }
    }

    QDBusConnection m_bus = QDBusConnection::sessionBus();
    QDBusConnection m_desktop = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "desktop");
};

void DesktopTest::keepsTheSessionAwake_data()
{
    QTest::addColumn<QStringList>("offered"); // the names that answer
    QTest::addColumn<QString>("asked");
    QTest::addColumn<QVariantList>("arguments");
    QTest::addColumn<QString>("released");
    const QString program = "Tessary Uploader";
    const QString reason = "A video is being uploaded";
    constexpr uint flags = 5; // logging out, and suspending
    const QString portal = "org.freedesktop.portal.Desktop";
    const QString manager = "org.gnome.SessionManager";
    const QString power = "org.freedesktop.PowerManagement";
    QTest::newRow("the portal comes first")
        << QStringList{portal, manager, power}
        << "org.freedesktop.portal.Inhibit.Inhibit /org/freedesktop/portal/desktop"
        << QVariantList{QString(), flags, QVariantMap{{"reason", reason}}}
        << "org.freedesktop.portal.Request.Close /request/1";
    QTest::newRow("then the session manager")
        << QStringList{manager, power} << "org.gnome.SessionManager.Inhibit /org/gnome/SessionManager"
        << QVariantList{program, 0U, reason, flags}
        << "org.gnome.SessionManager.Uninhibit /org/gnome/SessionManager";
    QTest::newRow("then power management")
        << QStringList{power} << power + ".Inhibit.Inhibit /org/freedesktop/PowerManagement/Inhibit"
        << QVariantList{program, reason}
        << power + ".Inhibit.UnInhibit /org/freedesktop/PowerManagement/Inhibit";
}

void DesktopTest::keepsTheSessionAwake()
{
    QFETCH(QStringList, offered);
    QFETCH(QString, asked);
    QFETCH(QString, released);
    const bool byPortal = offered.contains("org.freedesktop.portal.Desktop");
    FakeService desktop(m_desktop, offered,
                        byPortal ? QVariant::fromValue(QDBusObjectPath("/request/1")) : QVariant(5U));
    SuspendInhibitor inhibitor(m_bus);
    inhibitor.setWanted(true);
    inhibitor.setWanted(true);
    settle(3); // once for each that may be asked
    QCOMPARE(desktop.calls, QStringList{asked});
    if (byPortal) {
        desktop.arguments.last() = qdbus_cast<QVariantMap>(desktop.arguments.last());
    }
    QTEST(desktop.arguments, "arguments");
    inhibitor.setWanted(false);
    settle();
    QCOMPARE(desktop.calls, (QStringList{asked, released}));
    QCOMPARE(desktop.arguments, byPortal ? QVariantList() : QVariantList{5U});
    inhibitor.setWanted(true);
    settle(3);
    QCOMPARE(desktop.calls.mid(2), QStringList{asked});
}

void DesktopTest::releasesWhatIsGrantedTooLate()
{
    FakeService portal(m_desktop, {"org.freedesktop.portal.Desktop"},
                       QVariant::fromValue(QDBusObjectPath("/request/2")));
    SuspendInhibitor inhibitor(m_bus);
    for (const bool wanted : {true, false, true, false}) { // over before the question has gone out
        inhibitor.setWanted(wanted);
    }
    settle(2); // the release goes out when the answer has come in
    QCOMPARE(portal.calls.size(), 2);
    QCOMPARE(portal.calls.last(), "org.freedesktop.portal.Request.Close /request/2");
}

void DesktopTest::isSilentWhereNobodyOffersIt()
{
    QTest::failOnWarning(QRegularExpression("."));
    SuspendInhibitor inhibitor(m_bus);
    inhibitor.setWanted(true);
    settle(3);
    inhibitor.setWanted(false);
    settle();
}

void DesktopTest::followsTheAppearance_data()
{
    const QString portal = "org.freedesktop.appearance";
    const QString gnome = "org.gnome.desktop.interface";
    QTest::addColumn<QString>("group");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("expected"); // dark, contrast, animations, text
    const auto row = [](const char* name, const QString& group, const char* key, const QVariant& value,
                        const char* expected) {
        QTest::newRow(name) << group << QString::fromLatin1(key) << value << QString::fromLatin1(expected);
    };
    row("dark", portal, "color-scheme", 1U, "1 0 1 1");
    row("light", portal, "color-scheme", 2U, "0 0 1 1");
    row("contrast", portal, "contrast", 1U, "0 1 1 1");
    row("contrast of old", "org.gnome.desktop.a11y.interface", "high-contrast", true, "0 1 1 1");
    row("still", gnome, "enable-animations", false, "0 0 0 1");
    row("large", gnome, "text-scaling-factor", 1.5, "0 0 1 1.5");
    row("far too large", gnome, "text-scaling-factor", 1e9, "0 0 1 3");
    row("far too small", gnome, "text-scaling-factor", 1e-9, "0 0 1 0.5");
    row("nothing", gnome, "text-scaling-factor", 0.0, "0 0 1 1");
    row("negative", gnome, "text-scaling-factor", -2.0, "0 0 1 1");
    row("no number", gnome, "text-scaling-factor", qQNaN(), "0 0 1 1");
    row("no value of the kind", gnome, "text-scaling-factor", QVariantList{2}, "0 0 1 1");
    row("another group", "test", "color-scheme", 1U, "0 0 1 1");
}

void DesktopTest::followsTheAppearance()
{
    QFETCH(QString, group);
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    QFETCH(QString, expected);
    using Settings = QMap<QString, QVariantMap>;
    qDBusRegisterMetaType<Settings>();
    const auto said = [](const PortalAppearance& appearance) {
        return QString("%1 %2 %3 %4")
            .arg(appearance.prefersDark())
            .arg(appearance.highContrast())
            .arg(appearance.animations())
            .arg(appearance.textScale());
    };
    const QStringList names{"org.freedesktop.portal.Desktop"};
    {
        const FakeService portal(m_desktop, names, QVariant::fromValue(Settings{{group, {{key, value}}}}));
        const PortalAppearance asked(m_bus);
        QCOMPARE(said(asked), "0 0 1 1");
        settle();
        QCOMPARE(said(asked), expected);
        QCOMPARE(portal.calls, QStringList(QStringLiteral("org.freedesktop.portal.Settings.ReadAll "
                                                          "/org/freedesktop/portal/desktop")));
        QCOMPARE(portal.arguments,
                 (QVariantList{QStringList{"org.freedesktop.appearance", "org.gnome.desktop.a11y.interface",
                                           "org.gnome.desktop.interface"}}));
    }
    FakeService portal(m_desktop, names, "not what was asked for");
    const PortalAppearance told(m_bus);
    settle();
    QCOMPARE(said(told), "0 0 1 1");
    portal.announce(group, key, value);
    settle();
    QCOMPARE(said(told), expected);
    QCOMPARE(told.changedFont(), QString());
    const QString font = "font-name";
    portal.announce("org.gnome.desktop.interface", font, "Cantarell 12");
    portal.announce("org.freedesktop.appearance", font, "of another group");
    settle();
    QCOMPARE(told.changedFont(), "Cantarell 12");
}

void DesktopTest::thePortalsDialogIsForWhoHasNoneOfTheirOwn_data()
{
    QTest::addColumn<bool>("hasTheme"); // where the themes of KDE and GTK are installed
    for (const char* desktop : {"GNOME", "ubuntu:GNOME", "X-Cinnamon", "Pantheon", "Unity", "MATE", "XFCE",
                                "LXDE", "KDE", "plasma:kde"}) {
        QTest::newRow(desktop) << true;
    }
    for (const char* desktop : {"", "sway", "GNOMELIKE"}) {
        QTest::newRow(desktop) << false;
    }
}

void DesktopTest::thePortalsDialogIsForWhoHasNoneOfTheirOwn()
{
    QFETCH(bool, hasTheme);
    qputenv("XDG_CURRENT_DESKTOP", QTest::currentDataTag());
    const QStringList before = QCoreApplication::libraryPaths();
    QCoreApplication::setLibraryPaths({}); // whatever is installed here
    QVERIFY(PortalFileChooser::isWanted());
    QCoreApplication::setLibraryPaths({TESSARY_PLUGINS});
    QCOMPARE(PortalFileChooser::isWanted(), !hasTheme);
    qputenv("QT_QPA_PLATFORMTHEME", "mine");
    QVERIFY(!PortalFileChooser::isWanted());
    qunsetenv("QT_QPA_PLATFORMTHEME");
    QCoreApplication::setLibraryPaths(before);
    qunsetenv("XDG_CURRENT_DESKTOP");
}

void DesktopTest::theCaretRestsUntilItIsWoken_data()
{
    QTest::addColumn<int>("event");
    QTest::addColumn<bool>("wakes");
    QTest::newRow("key") << int(QEvent::KeyPress) << true;
    QTest::newRow("click") << int(QEvent::MouseButtonPress) << true;
    QTest::newRow("key let go") << int(QEvent::KeyRelease) << false;
}

void DesktopTest::theCaretRestsUntilItIsWoken()
{
    QFETCH(int, event);
    QFETCH(bool, wakes);
    const auto flashTime = [] { return QGuiApplication::styleHints()->cursorFlashTime(); };
    const int before = flashTime();
    QVERIFY(before > 0);
    {
        const CaretRest rest;
        auto* untouched = rest.findChild<QTimer*>();
        QVERIFY(untouched->isActive() && untouched->isSingleShot());
        QCOMPARE(untouched->intervalAsDuration(), std::chrono::seconds(10));
        untouched->setInterval(0); // the ten seconds are over
        QTRY_COMPARE(flashTime(), 0);
        untouched->setInterval(std::chrono::minutes(1));
        QEvent touch{static_cast<QEvent::Type>(event)};
        QObject something;
        QCoreApplication::sendEvent(&something, &touch);
        QCOMPARE(flashTime(), wakes ? before : 0);
        QCOMPARE(untouched->isActive(), wakes);
    }
    QCOMPARE(flashTime(), before);
}

QTEST_MAIN(DesktopTest)
#include "tst_services.moc"
