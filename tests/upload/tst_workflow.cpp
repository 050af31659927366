#include "tests/support/Bench.h"

#include <QSignalSpy>

using namespace tessary;
using local::Fault;
using local::LocalService;

namespace {

const QString separate = QStringLiteral("Separate");
const QString completed = QStringLiteral("Upload completed successfully!");

} // namespace

class WorkflowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void missingInputs_data();
    void missingInputs();
    void oneFile();
    void twoFilesWhoseUrlsAnswerInReverse();
    void aFailedTransferWaitsForTheOther_data();
    void aFailedTransferWaitsForTheOther();
    void aFailedRequestCancelsTheOther();
};

void WorkflowTest::missingInputs_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("missing");
    QTest::addColumn<QString>("status"); // empty when the upload starts
    const QString one = QStringLiteral("Select a file and enter a name.");
    const QString both = QStringLiteral("Select both files and enter a name.");
    QTest::newRow("file") << QStringLiteral("2D") << QStringLiteral("selectedFile") << one;
    QTest::newRow("name") << QStringLiteral("2D") << QStringLiteral("videoName") << one;
    QTest::newRow("left") << separate << QStringLiteral("selectedFileLeft") << both;
    QTest::newRow("right") << separate << QStringLiteral("selectedFileRight") << both;
    QTest::newRow("name of two") << separate << QStringLiteral("videoName") << both;
    QTest::newRow("name of spaces") << QStringLiteral("2D") << QString() << QString();
}

void WorkflowTest::missingInputs()
{
    QFETCH(QString, format);
    QFETCH(QString, missing);
    QFETCH(QString, status);
    const Bench bench(patientTool);
    bench.choose(format);
    if (missing.isEmpty()) {
        bench.screen->setVideoName(QStringLiteral("   "));
    } else {
        const QByteArray property = missing.toLatin1();
        const QVariant none =
            missing == QLatin1StringView("videoName") ? QVariant(QString()) : QVariant(QUrl());
        QVERIFY(bench.screen->setProperty(property.constData(), none));
    }
    QCOMPARE(bench.screen->inputsReady(), status.isEmpty());
    bench.screen->startUpload();
    QCOMPARE(bench.screen->isUploading(), status.isEmpty());
    QCOMPARE(bench.screen->statusMessage(),
             status.isEmpty() ? QStringLiteral("Requesting upload URL...") : status);
    bench.screen->cancelUpload();
    QVERIFY(bench.isIdle());
}

void WorkflowTest::oneFile()
{
    Bench bench(R"(printf '\r50.0 %%, 2-sec Throughput (Mb/s): 8.5'; sleep 0.1; echo done)");
    bench.screen->processOutput(QStringLiteral("of an earlier upload 60 %"));
    bench.startUpload();
    QVERIFY(bench.reaches(completed));
    QVERIFY(!bench.screen->isUploading());
    QVERIFY(bench.screen->showSuccessAnimation());
    bench.screen->setVideoName(QStringLiteral("Late 100% name")); // the registration takes what it finds
    bench.screen->cancelUpload(); // reaches no upload that has ended, nor its registration
    QVERIFY(bench.isIdle());

    QCOMPARE(bench.statuses,
             (QStringList{QStringLiteral("Requesting upload URL..."), QStringLiteral("Uploading..."),
                          completed, QStringLiteral("Upload canceled")}));
    QCOMPARE(bench.screen->progress(), 0.5);
    QCOMPARE(bench.registrations(), std::size_t{1});
    const local::RegisteredVideo& video = bench.service.library().videos().at(0);
    QCOMPARE(video.videoName, QStringLiteral("Late 100% name"));
    QCOMPARE(video.fileFormat3D, QStringLiteral("2D"));
    QVERIFY(!video.is3D && !video.uploadedUrlRight);
    QCOMPARE(video.perspective, 60);
    QCOMPARE(video.uploadedUrl, bench.service.library().issuedUrls().at(0).section(u'?', 0, 0));
    // The name's percent sign makes a progress report of the registration line.
    QCOMPARE(bench.screen->logs(),
             QStringLiteral("Received Upload Sessions\n\n50.0%: 8.5 (Mb/s)\ndone\n\n0.0%\n"));

    bench.screen->successOverlayAppeared(); // the overlay's own timer, beside the workflow's
    QTRY_VERIFY(!bench.screen->showSuccessAnimation());
}

void WorkflowTest::twoFilesWhoseUrlsAnswerInReverse()
{
    Bench bench(patientTool);
    bench.tool.make("go");
    bench.service.answerInReverse(LocalService::uploadUrlPath, 2);
    bench.startUpload(separate);
    QVERIFY(bench.reaches(completed));
    QVERIFY(bench.isIdle());

    const QStringList issued = bench.service.library().issuedUrls(); // left's, right's; right's answers first
    const QByteArray runs = bench.tool.content("runs");
    QVERIFY(runs.contains("left.mov " + issued.at(1).toUtf8() + '\n'));
    QVERIFY(runs.contains("right.mov " + issued.at(0).toUtf8() + '\n'));
    const local::RegisteredVideo& video = bench.service.library().videos().at(0);
    QCOMPARE(video.uploadedUrl, issued.at(1).section(u'?', 0, 0));
    QCOMPARE(video.uploadedUrlRight, issued.at(0).section(u'?', 0, 0));
    QCOMPARE(video.videoName, QStringLiteral("My %1 video"));
    QVERIFY(bench.logHas("0.0%\n")); // the same, by the name's place marker
}

void WorkflowTest::aFailedTransferWaitsForTheOther_data()
{
    QTest::addColumn<bool>("cancelTheOther");
    QTest::newRow("which ends well") << false;
    QTest::newRow("which is cancelled") << true;
}

void WorkflowTest::aFailedTransferWaitsForTheOther()
{
    QFETCH(bool, cancelTheOther);
    Bench bench("case $2 in *left*) exit 4;; esac" + patientTool);
    bench.startUpload(separate);
    QVERIFY(bench.logHas("copying right.mov"));
    QTest::qWait(200); // the left one has failed long since
    QCOMPARE(bench.screen->statusMessage(), QStringLiteral("Uploading..."));
    if (cancelTheOther) {
        bench.screen->cancelUpload();
    } else {
        bench.tool.make("go");
    }
    QVERIFY(bench.isIdle());
    QCOMPARE(bench.screen->statusMessage(), QStringLiteral("Error: AzCopy exited with code 4"));
    QCOMPARE(bench.registrations(), std::size_t{0});
}

void WorkflowTest::aFailedRequestCancelsTheOther()
{
    Bench bench(patientTool);
    bench.service.addFault(LocalService::uploadUrlPath, Fault::neverAnswered());
    bench.service.addFault(LocalService::uploadUrlPath, Fault::answered({500, "no"}));
    bench.startUpload(separate);
    QVERIFY(bench.isIdle());
    QVERIFY(bench.screen->statusMessage().contains(QLatin1StringView("did not answer with an upload URL")));
    QVERIFY(!bench.tool.has("runs"));
}

QTEST_GUILESS_MAIN(WorkflowTest)
#include "tst_workflow.moc"
