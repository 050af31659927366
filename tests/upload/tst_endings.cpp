#include "service/Diagnostics.h"
#include "tests/support/Bench.h"

#include <QProcess>
#include <QSignalSpy>

#include <csignal>
#include <sys/prctl.h>
#include <sys/wait.h>

using namespace tessary;
using local::Fault;
using local::LocalService;

namespace {

const QString separate = QStringLiteral("Separate");
const QString completed = QStringLiteral("Upload completed successfully!");
const QString canceled = QStringLiteral("Upload canceled");

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
    void aSupersededUploadIsMute_data();
    void aSupersededUploadIsMute();
    void anUploadOutlivesItsScreen();
    void endingEverything();
    void aKilledProgramTakesItsToolsAlong();
};

void EndingsTest::cancelling()
{
    Bench bench(patientTool);
    bench.startUpload(separate);
    QVERIFY(bench.logHas("copying left.mov") && bench.logHas("copying right.mov"));
    const QString before = bench.screen->logs();
    bench.screen->cancelUpload();
    QVERIFY(!bench.screen->isUploading());
    QCOMPARE(bench.screen->statusMessage(), canceled);
    QCOMPARE(bench.screen->logs(), before);
    QVERIFY(bench.isIdle());
    QCOMPARE(bench.screen->statusMessage(), canceled);
    QVERIFY(bench.logHas("stopped left.mov") && bench.logHas("stopped right.mov"));
    QVERIFY(bench.screen->logs().endsWith(QLatin1StringView("Upload canceled by user\n")));
    QCOMPARE(bench.registrations(), std::size_t{0});
}

void EndingsTest::cancellingARequest()
{
    Bench bench(patientTool);
    bench.service.addFault(LocalService::uploadUrlPath, Fault::neverAnswered());
    bench.startUpload();
    QTRY_COMPARE(bench.service.requests().size(), std::size_t{1});
    bench.screen->cancelUpload();
    QCOMPARE(bench.screen->statusMessage(), canceled);
    QVERIFY(bench.isIdle());
    QCOMPARE(bench.screen->statusMessage(),
             QStringLiteral("Error: The request was abandoned because the upload was canceled."));
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
    Bench bench("if [ ! -e $home/second ]; then trap '" + onTerm +
                "' TERM; echo first; while :; do sleep 0.02; done; fi" + patientTool);
    bench.startUpload();
    QVERIFY(bench.logHas("first"));
    bench.tool.make("second");
    bench.screen->cancelUpload();
    bench.screen->setSelectedFile(QUrl::fromLocalFile(QStringLiteral("/videos/second.mov")));
    bench.screen->startUpload();
    bench.statuses.clear();
    QVERIFY(bench.logHas("copying second.mov"));
    QTest::qWait(500); // the first one has wound down
    QVERIFY(bench.screen->isUploading());
    QCOMPARE(bench.screen->logs(), QStringLiteral("Received Upload Sessions\n\ncopying second.mov\n\n"));
    bench.tool.make("go");
    QVERIFY(bench.isIdle());
    QCOMPARE(bench.statuses, (QStringList{QStringLiteral("Uploading..."), completed}));
    QCOMPARE(bench.registrations(), std::size_t{1});
}

void EndingsTest::anUploadOutlivesItsScreen()
{
    Bench bench(patientTool);
    bench.startUpload();
    const std::weak_ptr<FileUploaderState> state = bench.screen;
    QVERIFY(bench.logHas("copying clip.mov"));
    bench.screen.reset();
    QVERIFY(!state.expired());
    bench.tool.make("go");
    QVERIFY(bench.isIdle());
    QCOMPARE(bench.registrations(), std::size_t{1});
    QTRY_VERIFY(state.expired());
}

void EndingsTest::endingEverything()
{
    Bench bench("trap '' TERM" + patientTool.split('\n').mid(2).join('\n'));
    bench.startUpload();
    QTRY_VERIFY(bench.tool.has("runs"));
    QSignalSpy ended(bench.app.uploadActivity(), &UploadActivity::ended);
    QSignalSpy killing(bench.app.uploadActivity(), &UploadActivity::killTools);
    bench.app.uploadActivity()->endAll();
    QCOMPARE(ended.count(), 0);
    QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 1, 20'000);
    QCOMPARE(killing.count(), 1); // the tool would not listen
    QVERIFY(bench.isIdle());
    bench.app.uploadActivity()->endAll();
    QCOMPARE(ended.count(), 2); // at once when nothing runs
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
        const Bench bench("echo \"copying $(basename \"$2\")\"; exec sleep 20");
        bench.startUpload(separate);
        if (bench.logHas("copying left.mov") && bench.logHas("copying right.mov")) {
            printLine(u"both tools run");
        }
        return QCoreApplication::exec(); // until it is killed
    }
    EndingsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_endings.moc"
