#include "desktop/ProcessSetup.h"
#include "tests/e2e/Run.h"

#include <QFile>
#include <QGuiApplication>
#include <QQuickItem>
#include <QTest>

using namespace tessary;
using namespace tessary::standins;
using testkit::WindowDriver;

namespace {

const QString filePicker = QStringLiteral("filePicker");
const QString statusLine = QStringLiteral("statusLine");

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString withoutQuery(const QString& url)
{
    return url.section(u'?', 0, 0);
}

} // namespace

class EndToEndTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFileReachesTheLibrary();
    void aPairKeepsTheOrderOfTheAnswers();
    void aNewUploadFollowsACancelledOneAtOnce();
    void aStoreThatComesBackIsWaitedFor();
    void anUploadToAStoreThatIsGoneCanBeCancelled();

private:
    /// Starts the upload of a large file and stops the store in the middle of it.
    [[nodiscard]] bool loseStore(Run& run);
    [[nodiscard]] bool largeFileArrives(Run& run);

    Store m_store;
};

void EndToEndTest::aFileReachesTheLibrary()
{
    const QString sample = QStringLiteral(TESSARY_SAMPLE);
    Run run(m_store.store());
    QVERIFY(run.start());
    QVERIFY(run.program.fillForm(QUrl::fromLocalFile(sample), QStringLiteral("Café <b>100 %</b>")));
    QVERIFY(run.program.click("formatOption:2D"));
    QVERIFY(run.program.click("perspectiveOption:360"));
    QVERIFY(run.program.click("uploadButton"));
    QVERIFY(run.reaches(UploadState::Completed));
    QVERIFY(WindowDriver::await(QStringLiteral("the library"), [&run] { return !run.videos().empty(); }));

    const RegisteredVideo& video = run.videos().front();
    QCOMPARE(video.videoName, QStringLiteral("Café <b>100 %</b>"));
    QCOMPARE(video.fileFormat3D, QStringLiteral("2D"));
    QVERIFY(!video.is3D);
    QCOMPARE(video.perspective, 360);
    QVERIFY(!video.uploadedUrlRight);
    QCOMPARE(video.uploadedUrl, withoutQuery(run.service.library().issuedUrls().front()));
    QCOMPARE(m_store.readBlob(video.uploadedUrl), contentOf(sample));
}

void EndToEndTest::aPairKeepsTheOrderOfTheAnswers()
{
    Run run(m_store.store());
    QVERIFY(run.start());
    run.service.answerInReverse(LocalService::uploadUrlPath, 2);
    const QByteArray left(300'000, 'l');
    const QByteArray right(200'000, 'r');
    QVERIFY(run.program.click("formatOption:Separate"));
    QVERIFY(run.program.driver().drop(QStringLiteral("leftEyePicker"),
                                      {run.program.makeFile(QStringLiteral("left eye.mp4"), left)}));
    QVERIFY(run.program.driver().drop(QStringLiteral("rightEyePicker"),
                                      {run.program.makeFile(QStringLiteral("right eye.mp4"), right)}));
    QVERIFY(run.program.driver().type(QStringLiteral("nameField"), QStringLiteral("Both eyes")));
    QVERIFY(run.program.click("uploadButton"));
    QVERIFY(run.isRegistered());

    QCOMPARE(run.videos().size(), 1U);
    const RegisteredVideo& video = run.videos().front();
    const QStringList issued = run.service.library().issuedUrls();
    QCOMPARE(issued.size(), 2);
    // The file that was chosen for the left eye goes where the answer that came first says.
    QCOMPARE(video.uploadedUrl, withoutQuery(issued.last()));
    QCOMPARE(video.uploadedUrlRight.value_or(QString()), withoutQuery(issued.first()));
    QCOMPARE(m_store.readBlob(video.uploadedUrl), left);
    QCOMPARE(m_store.readBlob(*video.uploadedUrlRight), right);
    QCOMPARE(video.fileFormat3D, QStringLiteral("Separate"));
}

void EndToEndTest::aNewUploadFollowsACancelledOneAtOnce()
{
    Run run(m_store.store());
    QVERIFY(run.start());
    // The tool tries on for minutes where nothing answers: only the cancelling ends it.
    run.answerNextWith(QStringLiteral("http://127.0.0.1:9/devstoreaccount1/harbor/clip.mp4?sig=none"));
    const QByteArray content(1'000'000, 'c');
    QVERIFY(run.program.fillForm(run.program.makeFile(QStringLiteral("clip.mp4"), content),
                                 QStringLiteral("Second try")));
    QVERIFY(run.program.click("uploadButton"));
    QVERIFY(WindowDriver::await(QStringLiteral("the tool's report"),
                                [&run] { return run.log().contains(u"0.0%"); }));

    QVERIFY(run.program.click("cancelUploadButton"));
    QVERIFY(run.reaches(UploadState::Cancelled));
    QVERIFY(run.program.click("uploadButton"));
    QVERIFY(run.isRegistered());
    QVERIFY(run.isIdle());

    QCOMPARE(run.videos().size(), 1U);
    QCOMPARE(run.service.requestsTo(LocalService::uploadUrlPath).size(), 2U);
    QCOMPARE(run.videos().front().uploadedUrl, withoutQuery(run.service.library().issuedUrls().last()));
    QCOMPARE(m_store.readBlob(run.videos().front().uploadedUrl), content);
    QCOMPARE(run.program.driver().textOf(statusLine), statusMessageOf(UploadState::Completed));
    QVERIFY2(!run.log().contains(u"cancel", Qt::CaseInsensitive), qPrintable(run.log()));
}

bool EndToEndTest::loseStore(Run& run)
{
    const qint64 stored = m_store.storedBytes();
    QFile file(run.program.pathOf(QStringLiteral("large.mp4")));
    if (!file.open(QIODevice::WriteOnly) || !file.resize(largeFile) || !run.start() ||
        !run.program.driver().drop(filePicker, {QUrl::fromLocalFile(file.fileName())}) ||
        !run.program.driver().type(QStringLiteral("nameField"), QStringLiteral("Large")) ||
        !run.program.click("uploadButton") ||
        !WindowDriver::await(QStringLiteral("the first blocks in the store"),
                             [&] { return m_store.storedBytes() > stored + largeFile / 32; })) {
        return false;
    }
    m_store.stop();
    // Two reports: at least one of them speaks of a time without the store.
    const qsizetype reports = run.log().count(u'%');
    return WindowDriver::await(QStringLiteral("the tool's reports"),
                               [&] { return run.log().count(u'%') >= reports + 2; }) &&
           run.program.driver().textOf(statusLine) == statusMessageOf(UploadState::Uploading) &&
           run.program.driver().ready(QStringLiteral("cancelUploadButton"));
}

bool EndToEndTest::largeFileArrives(Run& run)
{
    if (!run.isRegistered() || run.videos().size() != 1 ||
        run.program.state().uploadState() != UploadState::Completed) {
        return false;
    }
    const QByteArray blob = m_store.readBlob(run.videos().front().uploadedUrl);
    return blob.size() == largeFile && blob.count('\0') == largeFile;
}

void EndToEndTest::aStoreThatComesBackIsWaitedFor()
{
    Run run(m_store.store());
    QVERIFY(loseStore(run));
    QVERIFY(run.videos().empty());
    m_store.start();
    QVERIFY(largeFileArrives(run));
}

void EndToEndTest::anUploadToAStoreThatIsGoneCanBeCancelled()
{
    Run run(m_store.store());
    QVERIFY(loseStore(run));
    QVERIFY(run.program.click("cancelUploadButton"));
    QVERIFY(run.reaches(UploadState::Cancelled));
    QVERIFY(run.isIdle());
    const QQuickItem* why = run.program.item("whyButton");
    QVERIFY(why == nullptr || !why->isVisible());
    m_store.start();
    QVERIFY(run.program.click("uploadButton"));
    QVERIFY(largeFileArrives(run));
    QVERIFY(run.isIdle());
    QCOMPARE(run.program.driver().textOf(statusLine), statusMessageOf(UploadState::Completed));
}

int main(int argc, char** argv)
{
    desktop::prepareProcess();
    const QGuiApplication application(argc, argv);
    EndToEndTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_endtoend.moc"
