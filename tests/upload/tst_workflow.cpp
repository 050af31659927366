#include "standins/ReceivedForm.h"
#include "testkit/TimerWatch.h"
#include "tests/support/UploadFixture.h"

#include <QSignalSpy>

using namespace tessary;
using standins::Fault;
using standins::LocalService;

namespace {

const QString separate = QStringLiteral("Separate");

using Forms = QList<standins::ReceivedForm>;

Forms formsSent(const UploadFixture& fixture, const char* path)
{
    Forms forms;
    for (const standins::ReceivedRequest& request : fixture.service.requestsTo(path)) {
        forms.append(standins::readForm(request.header("Content-Type"), request.body)
                         .value_or(standins::ReceivedForm()));
    }
    return forms;
}

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
    const UploadFixture fixture(patientTool);
    QCOMPARE(fixture.screen->statusMessage(), QStringLiteral("Ready to upload"));
    fixture.choose(format);
    if (missing.isEmpty()) {
        fixture.screen->setVideoName(QStringLiteral("   "));
    } else {
        const QByteArray property = missing.toLatin1();
        const QVariant none =
            missing == QLatin1StringView("videoName") ? QVariant(QString()) : QVariant(QUrl());
        QVERIFY(fixture.screen->setProperty(property.constData(), none));
    }
    QCOMPARE(fixture.screen->inputsReady(), status.isEmpty());
    fixture.screen->startUpload();
    QCOMPARE(fixture.screen->isUploading(), status.isEmpty());
    QCOMPARE(fixture.screen->statusMessage(),
             status.isEmpty() ? statusMessageOf(UploadState::Requesting) : status);
    fixture.screen->cancelUpload();
    QVERIFY(fixture.isIdle());
}

void WorkflowTest::oneFile()
{
    UploadFixture fixture(R"(printf %s "$3" > "$home/url"; printf '\r50.0 %%, 2-sec Throughput (Mb/s): 8.5'
        until [ -e $home/read ]; do sleep 0.02; done; echo done)");
    const QString twoQueries = QStringLiteral("http://store/a%20blob?sig=a?b/c=d");
    fixture.service.addFault(LocalService::uploadUrlPath,
                             Fault::answered({200, "{\"sasUrl\": \"" + twoQueries.toUtf8() + "\"}"}));
    fixture.screen->processOutput(QStringLiteral("of an earlier upload 60 %"));
    fixture.startUpload();
    QVERIFY(fixture.logHas("8.5"));
    fixture.tool.make("read");
    QVERIFY(fixture.reaches(UploadState::Completed));
    QVERIFY(!fixture.screen->isUploading());
    QVERIFY(fixture.screen->showSuccessAnimation());
    fixture.screen->setVideoName(QStringLiteral("Late 100% name")); // the registration takes what it finds
    fixture.screen->cancelUpload(); // reaches no upload that has ended, nor its registration
    QVERIFY(fixture.isIdle());

    QCOMPARE(fixture.announced,
             (QStringList{busy, QStringLiteral("Requesting upload URL..."), QStringLiteral("Uploading..."),
                          idle, QStringLiteral("Upload completed successfully!"), idle,
                          QStringLiteral("Upload canceled")}));
    QCOMPARE(fixture.screen->progress(), 0.5);
    QCOMPARE(fixture.registrations(), std::size_t{1});
    QCOMPARE(formsSent(fixture, LocalService::uploadUrlPath),
             Forms({{{QStringLiteral("uniqueFileName"), QStringLiteral("clip.mov")}}}));
    QCOMPARE(formsSent(fixture, LocalService::registrationPath),
             Forms({{{QStringLiteral("uploadedUrl"), QStringLiteral("http://store/a%20blob")},
                     {QStringLiteral("fileFormat3D"), QStringLiteral("2D")},
                     {QStringLiteral("is3D"), QStringLiteral("false")},
                     {QStringLiteral("perspective"), QStringLiteral("60")},
                     {QStringLiteral("videoName"), QStringLiteral("Late 100% name")}}}));
    QVERIFY(fixture.tool.content("url") == twoQueries.toUtf8());
    // The name's percent sign makes a progress report of the registration line.
    QCOMPARE(fixture.screen->logs(),
             QStringLiteral("Received Upload Sessions\n\n50.0%: 8.5 (Mb/s)\ndone\n\n0.0%\n"));

    const testkit::TimerWatch timers;
    QTRY_VERIFY(!fixture.screen->showSuccessAnimation());
    QVERIFY(timers.saw(std::chrono::seconds(2), Qt::PreciseTimer));
}

void WorkflowTest::twoFilesWhoseUrlsAnswerInReverse()
{
    UploadFixture fixture(patientTool);
    fixture.tool.make("go");
    fixture.service.answerInReverse(LocalService::uploadUrlPath, 2);
    fixture.startUpload(separate);
    QVERIFY(fixture.reaches(UploadState::Completed));
    QVERIFY(fixture.isIdle());

    const QStringList issued = fixture.service.library().issuedUrls(); // the later one is answered first
    const QByteArray runs = fixture.tool.content("runs");
    QVERIFY(runs.contains("left.mov " + issued.at(1).toUtf8() + '\n'));
    QVERIFY(runs.contains("right.mov " + issued.at(0).toUtf8() + '\n'));
    const standins::RegisteredVideo& video = fixture.service.library().videos().at(0);
    QCOMPARE(video.uploadedUrl, issued.at(1).section(u'?', 0, 0));
    QCOMPARE(video.uploadedUrlRight, issued.at(0).section(u'?', 0, 0));
    QCOMPARE(video.videoName, QStringLiteral("My %1 video"));
    QVERIFY(fixture.logHas("0.0%\n")); // the same, by the name's place marker
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
    UploadFixture fixture("case $2 in *left*) exit 4;; esac" + patientTool);
    fixture.startUpload(separate);
    QVERIFY(fixture.logHas("copying right.mov"));
    QTRY_COMPARE(fixture.app.uploadActivity()->children().size(), 1); // the left one's run is over
    QCoreApplication::processEvents();                                // and the upload has been told
    QCOMPARE(fixture.screen->statusMessage(), statusMessageOf(UploadState::Uploading));
    if (cancelTheOther) {
        fixture.screen->cancelUpload();
    } else {
        fixture.tool.make("go");
    }
    QVERIFY(fixture.isIdle());
    QCOMPARE(fixture.screen->statusMessage(), QStringLiteral("Error: AzCopy exited with code 4"));
    QCOMPARE(fixture.registrations(), std::size_t{0});
}

void WorkflowTest::aFailedRequestCancelsTheOther()
{
    UploadFixture fixture(patientTool);
    fixture.service.addFault(LocalService::uploadUrlPath, Fault::neverAnswered());
    fixture.service.addFault(LocalService::uploadUrlPath, Fault::answered({500, "no"}));
    fixture.startUpload(separate);
    QVERIFY(fixture.isIdle());
    QVERIFY(fixture.screen->statusMessage().contains(QLatin1StringView("did not answer with an upload URL")));
    QVERIFY(!fixture.tool.has("runs"));
}

QTEST_GUILESS_MAIN(WorkflowTest)
#include "tst_workflow.moc"
