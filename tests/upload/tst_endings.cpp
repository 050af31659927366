#include "service/Diagnostics.h"
#include "service/HttpCall.h"
#include "testkit/ProcessUsage.h"
#include "testkit/TimerWatch.h"
#include "tests/support/UploadFixture.h"

#include <QNetworkAccessManager>
#include <QProcess>
#include <QSignalSpy>

#include <csignal>
#include <sys/prctl.h>
#include <sys/wait.h>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

using namespace tessary;
using standins::Fault;
using standins::LocalService;

namespace {

const QString separate = QStringLiteral("Separate");
const QString completed = statusMessageOf(UploadState::Completed);
const QString canceled = statusMessageOf(UploadState::Cancelled);
const QString abandoned = QStringLiteral("Error: The request was abandoned because the upload was canceled.");

/// Given to this test program, which is then a program that uploads and does not end.
const QString uploadAPair = QStringLiteral("--upload-a-pair");

} // namespace

/// Uploads that are cancelled, whose screen goes, or that the program's end cuts short.
class EndingsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cancelling();
    void cancellingARequest();
    void cancellingWhenTheUrlHasCome();
    void aSupersededUploadIsMute_data();
    void aSupersededUploadIsMute();
    void anUploadOutlivesItsScreen();
    void endingEverything();
    void aProgramMayEndAtAnyMoment_data();
    void aProgramMayEndAtAnyMoment();
    void whatIsQueuedThenNeverBegins();
    void aKilledProgramTakesItsToolsAlong();
};

void EndingsTest::cancelling()
{
    UploadFixture fixture(patientTool);
    fixture.startUpload(separate);
    QVERIFY(fixture.logHas("copying left.mov") && fixture.logHas("copying right.mov"));
    const QString before = fixture.screen->logs();
    fixture.screen->cancelUpload();
    QCOMPARE(fixture.announced.mid(3), (QStringList{idle, canceled}));
    QCOMPARE(fixture.screen->logs(), before);
    QVERIFY(fixture.isIdle());
    QCOMPARE(fixture.announced.mid(3), (QStringList{idle, canceled, idle, canceled}));
    QVERIFY(fixture.logHas("stopped left.mov") && fixture.logHas("stopped right.mov"));
    QVERIFY(fixture.screen->logs().endsWith(QLatin1StringView("Upload canceled by user\n")));
    QCOMPARE(fixture.registrations(), std::size_t{0});
}

void EndingsTest::cancellingARequest()
{
    UploadFixture fixture(patientTool);
    fixture.service.addFault(LocalService::uploadUrlPath, Fault::neverAnswered());
    fixture.startUpload();
    QTRY_COMPARE(fixture.service.requests().size(), std::size_t{1});
    fixture.screen->cancelUpload();
    QCOMPARE(fixture.screen->statusMessage(), canceled);
    QVERIFY(fixture.isIdle());
    QCOMPARE(fixture.screen->statusMessage(), abandoned);
}

void EndingsTest::cancellingWhenTheUrlHasCome()
{
    UploadFixture fixture(patientTool);
    // After the answer, and before the upload goes on with it.
    connect(&fixture.service, &LocalService::requestReceived, fixture.screen.get(),
            [screen = fixture.screen.get()] {
                connect(
                    httpSession().findChild<QNetworkAccessManager*>(), &QNetworkAccessManager::finished,
                    screen, [screen] { screen->cancelUpload(); }, Qt::QueuedConnection);
            });
    fixture.startUpload();
    QVERIFY(fixture.isIdle());
    QCOMPARE(fixture.screen->statusMessage(), canceled);
    QCOMPARE(fixture.screen->logs(), QStringLiteral("Upload canceled by user\n"));
}

void EndingsTest::aSupersededUploadIsMute_data()
{
    QTest::addColumn<QByteArray>("onTerm");
    QTest::newRow("ends as cancelled") << QByteArray("echo noise; sleep 0.3; exit 1");
    QTest::newRow("ends well all the same") << QByteArray("echo noise; sleep 0.3; exit 0");
}

void EndingsTest::aSupersededUploadIsMute()
{
    QFETCH(QByteArray, onTerm);
    UploadFixture fixture("if [ ! -e $home/second ]; then trap '" + onTerm +
                          "' TERM; echo first; while :; do sleep 0.02; done; fi" + patientTool);
    fixture.startUpload();
    QVERIFY(fixture.logHas("first"));
    fixture.tool.make("second");
    fixture.screen->cancelUpload();
    fixture.screen->setSelectedFile(QUrl::fromLocalFile(QStringLiteral("/videos/second.mov")));
    fixture.screen->startUpload();
    fixture.announced.clear();
    QSignalSpy ends(fixture.app.uploadActivity(), &UploadActivity::underWayChanged);
    QVERIFY(fixture.logHas("copying second.mov"));
    QTRY_COMPARE(ends.count(), 1); // the first one has wound down
    QVERIFY(fixture.screen->isUploading());
    QCOMPARE(fixture.screen->logs(), QStringLiteral("Received Upload Sessions\n\ncopying second.mov\n\n"));
    fixture.tool.make("go");
    QVERIFY(fixture.isIdle());
    QCOMPARE(fixture.announced, (QStringList{statusMessageOf(UploadState::Uploading), idle, completed}));
    QCOMPARE(fixture.registrations(), std::size_t{1});
}

void EndingsTest::anUploadOutlivesItsScreen()
{
    UploadFixture fixture(patientTool);
    fixture.startUpload();
    const std::weak_ptr<FileUploaderState> state = fixture.screen;
    QVERIFY(fixture.logHas("copying clip.mov"));
    const QSignalSpy ended(fixture.app.uploadActivity(), &UploadActivity::ended);
    fixture.screen.reset();
    QVERIFY(!state.expired());
    fixture.tool.make("go");
    QVERIFY(fixture.isIdle());
    QCOMPARE(fixture.registrations(), std::size_t{1});
    QTRY_VERIFY(state.expired());
    QCOMPARE(ended.count(), 0); // which would quit the program
}

void EndingsTest::endingEverything()
{
    UploadFixture fixture("trap '' TERM\n" + patientTool.split('\n').mid(2).join('\n'));
    fixture.startUpload();
    QTRY_VERIFY(fixture.tool.has("runs"));
    QSignalSpy ended(fixture.app.uploadActivity(), &UploadActivity::ended);
    QSignalSpy killing(fixture.app.uploadActivity(), &UploadActivity::killTools);
    const testkit::TimerWatch timers;
    fixture.app.uploadActivity()->endAll();
    QCOMPARE(ended.count(), 0);
    QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 1, 20'000);
    QCOMPARE(killing.count(), 1); // the tool would not listen
    QVERIFY(timers.saw(std::chrono::seconds(5), Qt::CoarseTimer));
    QVERIFY(fixture.isIdle());
    fixture.app.uploadActivity()->endAll();
    QCOMPARE(ended.count(), 2); // at once when nothing runs
}

void EndingsTest::aProgramMayEndAtAnyMoment_data()
{
    QTest::addColumn<QString>("moment"); // when this is said or asked for
    QTest::addColumn<bool>("answered");  // else the service keeps every request waiting
    QTest::addColumn<QString>("last");   // that is said
    const auto path = [](const char* text) { return QString::fromLatin1(text); };
    const QString requesting = statusMessageOf(UploadState::Requesting);
    QTest::newRow("the start is queued") << requesting << true << requesting;
    QTest::newRow("the sign-in is checked") << path(LocalService::startupPath) << false << abandoned;
    QTest::newRow("a URL is asked for") << path(LocalService::uploadUrlPath) << false << abandoned;
    QTest::newRow("a URL comes") << path(LocalService::uploadUrlPath) << true << abandoned;
    QTest::newRow("the tools are started") << statusMessageOf(UploadState::Uploading) << true << canceled;
    QTest::newRow("the tools run") << QStringLiteral("copying right.mov") << true << canceled;
    QTest::newRow("the registration is queued") << completed << true << completed;
    QTest::newRow("the registration is sent") << path(LocalService::registrationPath) << true << completed;
}

void EndingsTest::aProgramMayEndAtAnyMoment()
{
    QFETCH(QString, moment);
    QFETCH(bool, answered);
    QFETCH(QString, last);
    const QString key = standins::localWorkspaces().at(0).key;
    const QTemporaryDir settings;
    StoredApiKey(settings.path()).write(key);
    LocalService service;
    service.addFault(LocalService::registrationPath, Fault::neverAnswered());
    if (!answered) {
        service.addFault(LocalService::startupPath, Fault::neverAnswered());
        service.addFault(LocalService::uploadUrlPath, Fault::neverAnswered());
        service.addFault(LocalService::uploadUrlPath, Fault::neverAnswered());
    }
    const testkit::ScriptedTool tool(last == completed ? QByteArray("exit 0") : patientTool);
    auto app = std::make_unique<tessary_macos_uploaderApp>(
        Configuration{service.baseUrl(), settings.path(), tool.folder()});
    std::shared_ptr<FileUploaderState> screen = app->uploaderStates()->make();
    const std::weak_ptr<FileUploaderState> state = screen;
    const auto endAt = [&app, &screen, &moment](const QString& said) {
        if (app && said.contains(moment)) {
            const auto end = [&app, &screen] {
                screen.reset();
                app.reset();
            };
            QMetaObject::invokeMethod(QCoreApplication::instance(), end, Qt::QueuedConnection);
        }
    };
    connect(&service, &LocalService::requestReceived, &service, endAt);
    QStringList statuses;
    connect(screen.get(), &FileUploaderState::statusMessageChanged, &service,
            [endAt, &statuses, shown = screen.get()] {
                statuses.append(shown->statusMessage());
                endAt(shown->statusMessage());
            });
    connect(screen.get(), &FileUploaderState::logsChanged, &service,
            [endAt, shown = screen.get()] { endAt(shown->logs()); });
    UploadFixture::choose(*screen, separate);
    screen->startUpload();
    QTRY_VERIFY_WITH_TIMEOUT(!app, 20'000);
    QVERIFY(state.expired());        // and with it what held it
    QCOMPARE(statuses.last(), last); // what has not begun never does
    QCOMPARE(testkit::takeProcessUsage().children, QList<qint64>());
    QCOMPARE(StoredApiKey(settings.path()).read(), key);
#ifdef __SANITIZE_ADDRESS__
    QCOMPARE(__lsan_do_recoverable_leak_check(), 0);
#endif
}

void EndingsTest::whatIsQueuedThenNeverBegins()
{
    auto activity = std::make_unique<UploadActivity>();
    const QSignalSpy told(activity.get(), &UploadActivity::underWayChanged);
    bool begun = false;
    const auto begin = [&begun] { begun = true; };
    const auto again = [begin, gone = activity.get()](const void* /*none*/) { gone->runLater(begin); };
    activity->runLater([begin, asksForMore = std::shared_ptr<void>(nullptr, again),
                        underWay = activity->beginRegistration()] { begin(); });
    activity.reset();
    QVERIFY(!begun);
    QCOMPARE(told.count(), 1); // when it was queued
}

void EndingsTest::aKilledProgramTakesItsToolsAlong()
{
    // What a killed process leaves becomes a child of this one, and can be waited for.
    QCOMPARE(prctl(PR_SET_CHILD_SUBREAPER, 1), 0);
    const QTemporaryDir folder; // takes what the program cannot clear away any more
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TMPDIR"), folder.path());
    program.setProcessEnvironment(environment);
    program.start(QCoreApplication::applicationFilePath(), {uploadAPair});
    QTRY_VERIFY_WITH_TIMEOUT(program.canReadLine(), 20'000);
    QCOMPARE(program.readLine(), QByteArray("both tools run\n"));

    QSignalSpy ended(&program, &QProcess::finished);
    program.kill();
    QVERIFY(ended.wait());
    QList<int> ends; // the signals that ended the tools
    for (int status = 0; waitpid(-1, &status, 0) > 0;) {
        ends.append(WIFSIGNALED(status) ? WTERMSIG(status) : 0);
    }
    QCOMPARE(ends, QList<int>({SIGKILL, SIGKILL}));
    prctl(PR_SET_CHILD_SUBREAPER, 0);
}

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    if (QCoreApplication::arguments().contains(uploadAPair)) {
        const UploadFixture fixture("echo \"copying $(basename \"$2\")\"; exec sleep 20");
        fixture.startUpload(separate);
        if (fixture.logHas("copying left.mov") && fixture.logHas("copying right.mov")) {
            printLine(u"both tools run");
        }
        return QCoreApplication::exec(); // until it is killed
    }
    EndingsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_endings.moc"
