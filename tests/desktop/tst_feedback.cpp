#include "desktop/LauncherEntry.h"
#include "desktop/Notifications.h"
#include "desktop/Termination.h"
#include "tests/support/FakeService.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <utility>

using namespace tessary::desktop;
using namespace tessary::testing;

namespace {

const QString server = "org.freedesktop.Notifications";
const QString serverPath = "/org/freedesktop/Notifications";

} // namespace

/// What the desktop is told, and what it asks for in return.
class FeedbackTest : public QObject
{
    Q_OBJECT

public Q_SLOTS:

    void takeUpdate(const QString& entry, const QVariantMap& properties)
    {
        QCOMPARE(entry, "application://tessary_macos_uploader.desktop");
        m_updates.append(QString("%1 %2 %3")
                             .arg(properties["progress"].toDouble())
                             .arg(properties["progress-visible"].toBool())
                             .arg(properties["urgent"].toBool()));
    }

private Q_SLOTS:
    void notifies_data();
    void notifies();
    void noticesThePress();
    void serversComeAndGo();
    void showsProgressAtTheDock();
    void endsInOrder_data();
    void endsInOrder();

private:
    void send(const char* signal, const QVariantList& arguments)
    {
        QDBusMessage message = QDBusMessage::createSignal(serverPath, server, signal);
        message.setArguments(arguments);
        m_desktop.send(message);
    }

    QDBusConnection m_bus = QDBusConnection::sessionBus();
    QDBusConnection m_desktop = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "desktop");
    QStringList m_updates;
};

void FeedbackTest::notifies_data()
{
    QTest::addColumn<QStringList>("capabilities");
    QTest::addColumn<bool>("urgent");
    QTest::addColumn<QString>("body");
    QTest::addColumn<QStringList>("actions");
    QTest::addColumn<QVariantList>("information"); // name, maker, version, and that of what it follows
    QTest::newRow("plain") << QStringList{"body"} << false << "<b>A & B</b>" << QStringList()
                           << QVariantList();
    QTest::newRow("markup") << QStringList{"body", "body-markup"} << false << "&lt;b&gt;A &amp; B&lt;/b&gt;"
                            << QStringList() << QVariantList();
    const QStringList show{"default", "Show"};
    for (const auto& [version, actions] :
         {std::pair{"46.0", show}, {"45.9", QStringList()}, {"", QStringList()}}) {
        QTest::addRow("GNOME Shell %s", version)
            << QStringList{"actions"} << true << "<b>A & B</b>" << actions
            << QVariantList{"gnome-shell", "GNOME", version, "1.2"};
    }
    QTest::newRow("urgent, with actions") << QStringList{"actions"} << true << "<b>A & B</b>" << show
                                          << QVariantList{"dunst", "knopwob", "1.9.0", "1.2"};
}

void FeedbackTest::notifies()
{
    QFETCH(QStringList, capabilities);
    QFETCH(bool, urgent);
    QFETCH(QVariantList, information);
    FakeService desktop(m_desktop, {server}, 7U);
    desktop.answers["GetCapabilities"] = capabilities;
    desktop.answers["GetServerInformation"] = information;
    Notifications notifications(m_bus);
    notifications.show(1, {"<i>Title</i>", "<b>A & B</b>", urgent});
    QTRY_COMPARE(desktop.calls, (QStringList{server + ".GetCapabilities " + serverPath,
                                             server + ".GetServerInformation " + serverPath,
                                             server + ".Notify " + serverPath}));
    QCOMPARE(desktop.arguments.at(0).toString(), "Tessary Uploader");
    QCOMPARE(desktop.arguments.at(1).toUInt(), 0U);
    QCOMPARE(desktop.arguments.at(2).toString(), "tessary_macos_uploader");
    QCOMPARE(desktop.arguments.at(3).toString(), "<i>Title</i>");
    QTEST(desktop.arguments.at(4).toString(), "body");
    QTEST(desktop.arguments.at(5).toStringList(), "actions");
    const auto hints = qdbus_cast<QVariantMap>(desktop.arguments.at(6));
    QCOMPARE(hints["desktop-entry"].toString(), "tessary_macos_uploader");
    QCOMPARE(hints["urgency"].value<uchar>(), urgent ? 2 : 1);
    QCOMPARE(desktop.arguments.at(7).toInt(), urgent ? 0 : -1);

    const auto replacedBy = [&](quint64 subject) {
        const qsizetype before = desktop.calls.size();
        notifications.show(subject, {"Again", {}});
        return QTest::qWaitFor([&] { return desktop.calls.size() == before + 1; })
                   ? int(desktop.arguments.at(1).toUInt())
                   : -1;
    };
    QVERIFY(settled(m_bus, m_desktop));
    QCOMPARE(replacedBy(1), 7); // in the place of the first
    QCOMPARE(replacedBy(2), 0);
    QTRY_VERIFY(notifications.children().isEmpty()); // nothing is kept of what was asked
}

void FeedbackTest::noticesThePress()
{
    FakeService desktop(m_desktop, {server}, 9U);
    desktop.answers["GetCapabilities"] = QStringList{"actions"};
    Notifications notifications(m_bus);
    const QSignalSpy pressed(&notifications, &Notifications::pressed);
    notifications.show(5, {"Title", "Body"});
    QTRY_COMPARE(desktop.calls.size(), 3);
    QCOMPARE(desktop.arguments.at(7).toInt(), -1); // it goes by itself
    QVERIFY(settled(m_bus, m_desktop));
    send("ActivationToken", {8U, "not ours"});
    send("ActionInvoked", {8U, "default"});
    send("ActionInvoked", {9U, "settings"});
    send("ActionInvoked", {9U, "default"});
    QTRY_COMPARE(pressed.count(), 1);
    QCOMPARE(pressed.first(), (QVariantList{5ULL, ""}));
    send("ActivationToken", {9U, "a token"});
    send("ActionInvoked", {9U, "default"});
    QTRY_COMPARE(pressed.count(), 2);
    QCOMPARE(pressed.last(), (QVariantList{5ULL, "a token"}));
    send("NotificationClosed", {9U, 1U});
    send("ActionInvoked", {9U, "default"});
    QVERIFY(settled(m_bus, m_desktop));
    notifications.show(5, {"Title", "Body"});
    QTRY_COMPARE(desktop.calls.size(), 4);
    QCOMPARE(desktop.arguments.at(1).toUInt(), 0U); // there is none to replace
    QCOMPARE(pressed.count(), 2);
}

void FeedbackTest::serversComeAndGo()
{
    QTest::failOnWarning(QRegularExpression("."));
    Notifications notifications(m_bus);
    notifications.show(1, {"Nobody", "sees this"});
    for (const auto& [capability, body] : {std::pair("body", "<b>"), std::pair("body-markup", "&lt;b&gt;")}) {
        QVERIFY(settled(m_bus, m_desktop));
        FakeService desktop(m_desktop, {server}, 1U);
        desktop.answers["GetCapabilities"] = QStringList{capability};
        notifications.show(1, {"Somebody does", "<b>"});
        QTRY_VERIFY(desktop.calls.contains(server + ".Notify " + serverPath));
        QCOMPARE(desktop.arguments.at(1).toUInt(), 0U); // this one has shown none yet
        QCOMPARE(desktop.arguments.at(4).toString(), body);
        QVERIFY(settled(m_bus, m_desktop));
    }
}

void FeedbackTest::showsProgressAtTheDock()
{
    QVERIFY(m_desktop.connect({}, "/com/canonical/unity/launcherentry/tessary",
                              "com.canonical.Unity.LauncherEntry", "Update", this,
                              SLOT(takeUpdate(QString, QVariantMap))));
    // The bus answers in turn, so it knows by then who listens.
    QVERIFY(m_desktop.interface()->isServiceRegistered(m_desktop.baseService()));
    {
        LauncherEntry entry(m_bus);
        QTRY_COMPARE(m_updates, QStringList{"0 0 0"}); // whatever an earlier run left there
        const auto* interval = entry.findChild<QTimer*>();
        QCOMPARE(interval->intervalAsDuration(), std::chrono::milliseconds(500));
        for (int percent = 1; percent <= 40; ++percent) {
            entry.setProgress(percent / 100.0);
        }
        QTRY_COMPARE(m_updates.size(), 3);
        QCOMPARE(m_updates.mid(1), (QStringList{"0.01 1 0", "0.4 1 0"}));
        QTRY_VERIFY(!interval->isActive()); // with nothing to tell, nothing wakes
        entry.setProgress(0.5);
        entry.setProgress(0.5);
        entry.setUrgent(true);
        entry.setUrgent(true);
        entry.setProgress(std::nullopt);
        entry.setProgress(0.6);
        QTRY_COMPARE(m_updates.size(), 7);
        QCOMPARE(m_updates.mid(3), (QStringList{"0.5 1 0", "0.5 1 1", "0 0 1", "0.6 1 1"}));
    }
    QTRY_COMPARE(m_updates.size(), 8);
    QCOMPARE(m_updates.last(), "0 0 0");
}

void FeedbackTest::endsInOrder_data()
{
    QTest::addColumn<int>("signal");
    QTest::addColumn<bool>("ignored"); // by who started it
    QTest::addColumn<QByteArray>("last");
    const QByteArray inOrder("asked\nin order\n");
    QTest::newRow("SIGTERM") << SIGTERM << false << inOrder;
    QTest::newRow("SIGINT") << SIGINT << false << inOrder;
    QTest::newRow("SIGHUP") << SIGHUP << false << inOrder;
    QTest::newRow("SIGHUP, ignored") << SIGHUP << true << inOrder;
    QTest::newRow("asked twice") << SIGTERM << false << QByteArray("asked\n");
    QTest::newRow("by itself") << 0 << false << QByteArray("in order\n");
}

void FeedbackTest::endsInOrder()
{
    QFETCH(int, signal);
    QFETCH(bool, ignored);
    QFETCH(QByteArray, last);
    const bool byItself = signal == 0;
    QProcess program;
    program.setChildProcessModifier([signal, ignored] { std::signal(signal, ignored ? SIG_IGN : SIG_DFL); });
    program.start(QCoreApplication::applicationFilePath(), {"as the program", QTest::currentDataTag()});
    QByteArray said;
    connect(&program, &QProcess::readyReadStandardOutput, this, [&] { said += program.readAll(); });
    QTRY_VERIFY(said.startsWith("ready\n"));
    ::kill(pid_t(program.processId()), signal);
    if (signal == SIGHUP) { // it comes more than once
        ::kill(pid_t(program.processId()), ignored ? SIGTERM : SIGHUP);
    } else if (last == "asked\n") {
        QTRY_VERIFY(said.endsWith(last));
        ::kill(pid_t(program.processId()), signal);
    }
    QTRY_COMPARE(program.state(), QProcess::NotRunning);
    QCOMPARE(said, "ready\n" + last);
    QCOMPARE(program.exitStatus() == QProcess::CrashExit, !byItself); // as Qt calls the end by a signal
    QCOMPARE(program.exitCode(), byItself ? EXIT_FAILURE : ignored ? SIGTERM : signal);
}

namespace {

void say(const char* word)
{
    std::puts(word);
    std::fflush(stdout);
}

void runAsTheProgram(const QByteArray& manner)
{
    const auto end = [] { QTimer::singleShot(0, QCoreApplication::instance(), &QCoreApplication::quit); };
    const Termination termination;
    QObject::connect(&termination, &Termination::requested, QCoreApplication::instance(), [=] {
        say("asked"); // and not again
        if (manner != "asked twice") {
            end();
        }
    });
    say("ready");
    if (manner == "by itself") {
        end();
    }
    QCoreApplication::exec();
    say("in order");
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    if (argc > 1 && qstrcmp(argv[1], "as the program") == 0) {
        runAsTheProgram(argv[2]);
        endAsRequested();
        return EXIT_FAILURE;
    }
    FeedbackTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_feedback.moc"
