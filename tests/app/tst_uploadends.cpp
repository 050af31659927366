#include "testkit/ProgramFixture.h"
#include "tests/support/FakeService.h"
#include "tests/support/UploadFixture.h"
#include "ui/uploader/UploaderStateHolder.h"
#include "upload/UploadTask.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryFile>
#include <QTest>

using namespace tessary;
using namespace tessary::testing;
using standins::Fault;
using standins::LocalService;

namespace {

/// The program with a window, at a service and with a tool of its own.
struct Stage
{
    explicit Stage(const QByteArray& script = "exit 0")
        : tool(script), program(service.baseUrl(), tool.folder())
    {
    }

    [[nodiscard]] bool start() { return program.signIn(standins::localWorkspaces().front().key); }

    standins::LocalService service;
    testkit::ScriptedTool tool;
    testkit::ProgramFixture program;
};

} // namespace

/// How an upload's end is told where nobody looks, and what is told while it is under way.
class UploadEndsTest : public QObject
{
    Q_OBJECT

public Q_SLOTS:

    void takeUpdate(const QString& /*entry*/, const QVariantMap& properties)
    {
        m_urgent = properties["urgent"].toBool();
    }

private Q_SLOTS:
    void isAnnounced_data();
    void isAnnounced();
    void isNotifiedOnlyWhereNobodyLooks();
    void isShownWhileUnderWay();
    void isExplained();

private:
    bool m_urgent = false; ///< as docks are told
};

void UploadEndsTest::isAnnounced_data()
{
    QTest::addColumn<QByteArray>("tool");
    QTest::addColumn<QByteArray>("refused"); // of the service
    QTest::addColumn<bool>("cancelled");
    QTest::addColumn<QString>("announced");
    const QByteArray nothing;
    const QByteArray url = LocalService::uploadUrlPath;
    const QByteArray registration = LocalService::registrationPath;
    QTest::newRow("registered") << QByteArray("exit 0") << nothing << false << "0 Next|";
    QTest::newRow("tool failed") << QByteArray("exit 3") << nothing << false
                                 << "1 My %1 video|AzCopy exited with code 3";
    QTest::newRow("no URL") << QByteArray("exit 0") << url << false << "1 My %1 video|The service refused.";
    QTest::newRow("not registered") << QByteArray("exit 0") << registration << false << "2 Next|";
    QTest::newRow("cancelled while asking") << QByteArray() << nothing << true << "";
    QTest::newRow("cancelled") << patientTool << nothing << true << "";
}

void UploadEndsTest::isAnnounced()
{
    QFETCH(QByteArray, tool);
    QFETCH(QByteArray, refused);
    QFETCH(bool, cancelled);
    QFETCH(QString, announced);
    UploadFixture fixture(tool);
    QString told;
    connect(fixture.app.uploadActivity(), &UploadActivity::uploadEnded, &fixture.app,
            [&](const UploadEnd& end) {
                told += QString::number(int(end.kind)) + u' ' + end.videoName + u'|' + end.description;
                QCOMPARE(end.screen, fixture.screen->number());
            });
    if (!refused.isEmpty()) {
        fixture.service.addFault(refused.constData(), Fault::answered({500, "no"}));
    }
    if (tool.isEmpty()) {
        fixture.service.addFault(LocalService::uploadUrlPath, Fault::neverAnswered());
    }
    fixture.startUpload();
    fixture.screen->setVideoName("Next"); // which only a registration looks at
    if (cancelled) {
        QTRY_VERIFY(!tool.isEmpty() || !fixture.service.requestsTo(LocalService::uploadUrlPath).empty());
        QVERIFY(tool.isEmpty() || fixture.logHas("copying"));
        fixture.screen->cancelUpload();
    }
    QVERIFY(fixture.isIdle());
    if (refused.isEmpty()) {
        QCOMPARE(told, announced);
    } else {
        QVERIFY2(told.startsWith(announced.section(u'|', 0, 0)) && !told.endsWith(u'|'), qPrintable(told));
    }
}

void UploadEndsTest::isNotifiedOnlyWhereNobodyLooks()
{
    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "desktop");
    const QString server = "org.freedesktop.Notifications";
    FakeService desktop(bus, {server}, 3U);
    desktop.answers["GetCapabilities"] = QStringList{"actions"};
    Stage stage;
    testkit::ProgramFixture& fixture = stage.program;
    QVERIFY(stage.start());
    QVERIFY(bus.connect({}, {}, "com.canonical.Unity.LauncherEntry", "Update", this,
                        SLOT(takeUpdate(QString, QVariantMap))));
    QVERIFY(fixture.program().openWindow());
    QVERIFY(fixture.program().openWindow());
    QQuickWindow* between = fixture.program().windows().at(1);
    QVERIFY(testkit::WindowDriver(*between).ready("nameField"));
    const quint64 screen = between->findChild<UploaderStateHolder*>()->state()->number();
    QTRY_VERIFY(QGuiApplication::focusWindow() != nullptr);
    UploadActivity& activity = *fixture.application().uploadActivity();
    const UploadEnd failed{UploadEnd::Kind::UploadFailed, "Harbor", "It broke.", screen};
    activity.announceEnd(failed); // people see it
    {
        QWindow other; // takes the focus with it when it goes
        other.show();
        QTRY_COMPARE(QGuiApplication::focusWindow(), &other);
    }
    QTRY_VERIFY(QGuiApplication::focusWindow() == nullptr);
    const auto body = [&](const UploadEnd& end) {
        desktop.arguments.clear();
        activity.announceEnd(end);
        return QTest::qWaitFor([&] { return desktop.arguments.size() == 8; })
                   ? desktop.arguments.at(3).toString() + ": " + desktop.arguments.at(4).toString() +
                         (desktop.arguments.at(7) == 0 ? " It stays." : "")
                   : "never";
    };
    QCOMPARE(body(failed), "Upload failed: \"Harbor\" could not be uploaded: It broke.");
    QCOMPARE(desktop.calls.size(), 3); // with the questions before it, and nothing for what was seen
    QTRY_VERIFY(m_urgent);
    QCOMPARE(body({UploadEnd::Kind::Registered, "Harbor\nat  dawn", {}, screen}),
             "Upload complete: \"Harbor at dawn\" is in the library of " +
                 fixture.application().sessionManager()->workspaceName() + '.');
    QCOMPARE(body({UploadEnd::Kind::RegistrationFailed, QString(300, 'x'), "No.", screen}),
             "Uploaded, but not in the library: \"" + QString(100, 'x') +
                 "…\" could not be added to the library: No. It stays.");
    fixture.session().setWorkspaceData({});
    QCOMPARE(body({UploadEnd::Kind::Registered, "Harbor", {}, screen}),
             "Upload complete: \"Harbor\" is in the library.");
    QDBusMessage press =
        QDBusMessage::createSignal("/org/freedesktop/Notifications", server, "ActionInvoked");
    press.setArguments({3U, "default"});
    QVERIFY(settled(QDBusConnection::sessionBus(), bus));
    bus.send(press);
    QTRY_COMPARE(QGuiApplication::focusWindow(), between);
    QTRY_VERIFY(!m_urgent);
}

void UploadEndsTest::isShownWhileUnderWay()
{
    Stage stage;
    testkit::ProgramFixture& fixture = stage.program;
    QVERIFY(stage.start());
    const QString name = "Tessary Uploader";
    QCOMPARE(fixture.window().title(), name);
    QTemporaryFile file;
    QVERIFY(file.open() && file.resize(2'000'000'000));
    stage.tool.replace("printf '\\r45.5 %%, 0 Done'; until [ -e \"$home/go\" ]; do sleep 0.02; done; "
                       "printf '\\r100.0 %%, 1 Done'");
    QVERIFY(fixture.fillForm(QUrl::fromLocalFile(file.fileName()), "Harbor"));
    QVERIFY(fixture.click("uploadButton"));
    QTRY_COMPARE(fixture.window().title(), "45 % - " + name);
    QCOMPARE(
        QAccessible::queryAccessibleInterface(fixture.item("progressBar"))->text(QAccessible::Description),
        "45 % of 2 GB");
    fixture.press(Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(fixture.driver().ready("declineButton"));
    QVERIFY(
        fixture.item("quitQuestion")->property("explanation").toString().startsWith("45 % of 2 GB are up. "));
    QVERIFY(fixture.click("declineButton"));
    const UploadActivity& activity = *fixture.application().uploadActivity();
    QCOMPARE(activity.fractionSent(), 0.455);
    stage.tool.make("go");
    QTRY_COMPARE(fixture.window().title(), name);
    QVERIFY(activity.progressInWords().isEmpty() && !activity.fractionSent());
    QVERIFY(!fixture.state().currentUploadTask()->progress.findChild<QTimer*>()->isActive()); // it is over
}

void UploadEndsTest::isExplained()
{
    Stage stage;
    testkit::ProgramFixture& fixture = stage.program;
    QVERIFY(stage.start());
    QVERIFY(fixture.item("whyButton") == nullptr);
    stage.tool.replace("echo 'Cannot do it: https://a.example/v?sig=secret'; exit 1");
    QVERIFY(fixture.fillForm(fixture.makeFile("clip.mov", "video"), "Harbor"));
    QVERIFY(fixture.click("uploadButton"));
    QTRY_VERIFY(fixture.item("whyButton") != nullptr);
    QVERIFY(fixture.click("whyButton"));
    QVERIFY(fixture.driver().ready("closeFailureSheet"));
    QCOMPARE(fixture.driver().textOf("failureLine"), "Cannot do it: https://a.example/v?…");
    fixture.press(Qt::Key_Escape);
    QTRY_VERIFY(fixture.item("failureSheet") == nullptr);
    QCOMPARE(fixture.focused(), "whyButton");
    fixture.press(Qt::Key_Space);
    QVERIFY(fixture.click("closeFailureSheet"));
    QTRY_VERIFY(fixture.item("failureSheet") == nullptr);

    stage.tool.replace("exit 0"); // the next upload has nothing to explain
    QVERIFY(fixture.click("uploadButton"));
    QTRY_COMPARE(fixture.state().uploadState(), UploadState::Completed);
    QVERIFY(fixture.item("whyButton") == nullptr);
    QVERIFY(fixture.state().failureReport() == nullptr);
}

QTEST_MAIN(UploadEndsTest)
#include "tst_uploadends.moc"
