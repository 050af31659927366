#include "app/ProcessSetup.h"
#include "app/Program.h"
#include "local/Azurite.h"
#include "local/LocalService.h"
#include "local/WindowDriver.h"

#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

using namespace tessary;
using namespace tessary::local;

namespace {

const QString filePicker = QStringLiteral("filePicker");
const QString statusLine = QStringLiteral("statusLine");
const QString uploadButton = QStringLiteral("uploadButton");
const QString completed = QStringLiteral("Upload completed successfully!");

/// Takes the tool some seconds; a sparse file.
constexpr qint64 largeFile = 512LL * 1024 * 1024;

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString withoutQuery(const QString& url)
{
    return url.section(u'?', 0, 0);
}

/// One run of the program, signed in at a service of its own.
struct Run
{
    explicit Run(const BlobStore& store)
        : service(store),
          program({service.baseUrl(), folder.filePath(QStringLiteral("settings")),
                   QStringLiteral(TESSARY_RESOURCES)})
    {
    }

    [[nodiscard]] bool start()
    {
        if (!program.openWindow()) {
            return false;
        }
        driver.emplace(*program.windows().front());
        return driver->type(QStringLiteral("keyField"), localWorkspaces().front().key) &&
               driver->click(QStringLiteral("submitKeyButton")) && driver->ready(filePicker);
    }

    /// A file of its own content, below the run's folder.
    QUrl makeFile(const QString& name, const QByteArray& content) const
    {
        QFile file(folder.filePath(name));
        const bool written = file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
        return written ? QUrl::fromLocalFile(file.fileName()) : QUrl();
    }

    /// What the service is to answer the next request for an upload URL with.
    void answerNextWith(const QString& uploadUrl)
    {
        service.addFault(LocalService::uploadUrlPath,
                         Fault::answered({200, R"({"sasUrl":")" + uploadUrl.toUtf8() + "\"}"}));
    }

    [[nodiscard]] bool isRegistered()
    {
        return WindowDriver::await(QStringLiteral("the registration in the log"),
                                   [this] { return log().contains(u"Video uploaded. Library ID: "); });
    }

    [[nodiscard]] QString log() const { return driver->textOf(QStringLiteral("logText")); }

    [[nodiscard]] const std::vector<RegisteredVideo>& videos() const { return service.library().videos(); }

    QTemporaryDir folder;
    LocalService service;
    Program program;
    std::optional<WindowDriver> driver;
};

} // namespace

class EndToEndTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aFileReachesTheLibrary();
    void aPairKeepsTheOrderOfTheAnswers();
    void aNewUploadFollowsACancelledOneAtOnce();
    void aRefusedTransferFails();
    void aStoreThatComesBackIsWaitedFor();
    void anUploadToAStoreThatIsGoneCanBeCancelled();

private:
    /// Starts the upload of a large file and stops the store in the middle of it.
    [[nodiscard]] bool loseStore(Run& run);
    [[nodiscard]] bool largeFileArrives(Run& run);

    QTemporaryDir m_toolFolder;
    std::optional<Azurite> m_azurite;
};

void EndToEndTest::initTestCase()
{
    qputenv("AZCOPY_LOG_LOCATION", m_toolFolder.path().toUtf8());
    qputenv("AZCOPY_JOB_PLAN_LOCATION", m_toolFolder.path().toUtf8());
    m_azurite.emplace();
    m_azurite->createContainer(localWorkspaces().front().container);
}

void EndToEndTest::aFileReachesTheLibrary()
{
    const QString sample = QStringLiteral(TESSARY_SAMPLE);
    Run run(m_azurite->store());
    QVERIFY(run.start());
    QVERIFY(run.driver->drop(filePicker, {QUrl::fromLocalFile(sample)}));
    QVERIFY(run.driver->type(QStringLiteral("nameField"), QStringLiteral("Café <b>100 %</b>")));
    QVERIFY(run.driver->click(QStringLiteral("formatOption:2D")));
    QVERIFY(run.driver->click(QStringLiteral("perspectiveOption:360")));
    QVERIFY(run.driver->click(uploadButton));
    QVERIFY(run.driver->shows(statusLine, completed));
    QVERIFY(WindowDriver::await(QStringLiteral("the library"), [&run] { return !run.videos().empty(); }));

    const RegisteredVideo& video = run.videos().front();
    QCOMPARE(video.videoName, QStringLiteral("Café <b>100 %</b>"));
    QCOMPARE(video.fileFormat3D, QStringLiteral("2D"));
    QVERIFY(!video.is3D);
    QCOMPARE(video.perspective, 360);
    QVERIFY(!video.uploadedUrlRight);
    QCOMPARE(video.uploadedUrl, withoutQuery(run.service.library().issuedUrls().front()));
    QCOMPARE(m_azurite->readBlob(video.uploadedUrl), contentOf(sample));
}

void EndToEndTest::aPairKeepsTheOrderOfTheAnswers()
{
    Run run(m_azurite->store());
    QVERIFY(run.start());
    run.service.answerInReverse(LocalService::uploadUrlPath, 2);
    const QByteArray left(300'000, 'l');
    const QByteArray right(200'000, 'r');
    QVERIFY(run.driver->click(QStringLiteral("formatOption:Separate")));
    QVERIFY(run.driver->drop(QStringLiteral("leftEyePicker"),
                             {run.makeFile(QStringLiteral("left eye.mp4"), left)}));
    QVERIFY(run.driver->drop(QStringLiteral("rightEyePicker"),
                             {run.makeFile(QStringLiteral("right eye.mp4"), right)}));
    QVERIFY(run.driver->type(QStringLiteral("nameField"), QStringLiteral("Both eyes")));
    QVERIFY(run.driver->click(uploadButton));
    QVERIFY(run.isRegistered());

    QCOMPARE(run.videos().size(), 1U);
    const RegisteredVideo& video = run.videos().front();
    const QStringList issued = run.service.library().issuedUrls();
    QCOMPARE(issued.size(), 2);
    // The file that was chosen for the left eye goes where the answer that came first says.
    QCOMPARE(video.uploadedUrl, withoutQuery(issued.last()));
    QCOMPARE(video.uploadedUrlRight.value_or(QString()), withoutQuery(issued.first()));
    QCOMPARE(m_azurite->readBlob(video.uploadedUrl), left);
    QCOMPARE(m_azurite->readBlob(*video.uploadedUrlRight), right);
    QCOMPARE(video.fileFormat3D, QStringLiteral("Separate"));
}

void EndToEndTest::aNewUploadFollowsACancelledOneAtOnce()
{
    Run run(m_azurite->store());
    QVERIFY(run.start());
    // The tool tries on for minutes where nothing answers: only the cancelling ends it.
    run.answerNextWith(QStringLiteral("http://127.0.0.1:9/devstoreaccount1/harbor/clip.mp4?sig=none"));
    const QByteArray content(1'000'000, 'c');
    QVERIFY(run.driver->drop(filePicker, {run.makeFile(QStringLiteral("clip.mp4"), content)}));
    QVERIFY(run.driver->type(QStringLiteral("nameField"), QStringLiteral("Second try")));
    QVERIFY(run.driver->click(uploadButton));
    QVERIFY(WindowDriver::await(QStringLiteral("the tool's report"),
                                [&run] { return run.log().contains(u"0.0%"); }));

    QVERIFY(run.driver->click(QStringLiteral("cancelUploadButton")));
    QVERIFY(run.driver->shows(statusLine, QStringLiteral("Upload canceled")));
    QVERIFY(run.driver->click(uploadButton));
    QVERIFY(run.isRegistered());
    const UploadActivity& activity = *run.program.application().uploadActivity();
    QVERIFY(WindowDriver::await(QStringLiteral("both uploads to end"), [&] { return !activity.underWay(); }));

    QCOMPARE(run.videos().size(), 1U);
    QCOMPARE(run.service.requestsTo(LocalService::uploadUrlPath).size(), 2U);
    QCOMPARE(run.videos().front().uploadedUrl, withoutQuery(run.service.library().issuedUrls().last()));
    QCOMPARE(m_azurite->readBlob(run.videos().front().uploadedUrl), content);
    QCOMPARE(run.driver->textOf(statusLine), completed);
    QVERIFY2(!run.log().contains(u"cancel", Qt::CaseInsensitive), qPrintable(run.log()));
}

void EndToEndTest::aRefusedTransferFails()
{
    Run run(m_azurite->store());
    QVERIFY(run.start());
    const QString expired =
        m_azurite->store().signedBlobUrl(localWorkspaces().front().container, QStringLiteral("late.mp4"),
                                         QStringLiteral("cw"), -std::chrono::hours(1));
    run.answerNextWith(expired);
    QVERIFY(run.driver->drop(filePicker, {run.makeFile(QStringLiteral("late.mp4"), "late")}));
    QVERIFY(run.driver->type(QStringLiteral("nameField"), QStringLiteral("Too late")));
    QVERIFY(run.driver->click(uploadButton));

    QVERIFY(run.driver->shows(statusLine, QStringLiteral("Error: AzCopy exited with code 1")));
    QVERIFY(run.driver->ready(uploadButton));
    QVERIFY(WindowDriver::await(QStringLiteral("the failure in the log"), [&run] {
        return run.log().endsWith(u"Upload Error: AzCopy exited with code 1\n");
    }));
    QVERIFY(run.service.requestsTo(LocalService::registrationPath).empty());
    const QString signature = expired.section(QStringLiteral("sig="), 1);
    QVERIFY(!signature.isEmpty() && !run.log().contains(signature));
}

bool EndToEndTest::loseStore(Run& run)
{
    const qint64 stored = m_azurite->storedBytes();
    QFile file(run.folder.filePath(QStringLiteral("large.mp4")));
    if (!file.open(QIODevice::WriteOnly) || !file.resize(largeFile) || !run.start() ||
        !run.driver->drop(filePicker, {QUrl::fromLocalFile(file.fileName())}) ||
        !run.driver->type(QStringLiteral("nameField"), QStringLiteral("Large")) ||
        !run.driver->click(uploadButton) ||
        !WindowDriver::await(QStringLiteral("the first blocks in the store"),
                             [&] { return m_azurite->storedBytes() > stored + largeFile / 32; })) {
        return false;
    }
    m_azurite->stop();
    // Two reports: at least one of them speaks of a time without the store.
    const qsizetype reports = run.log().count(u'%');
    return WindowDriver::await(QStringLiteral("the tool's reports"),
                               [&] { return run.log().count(u'%') >= reports + 2; }) &&
           run.driver->textOf(statusLine) == QStringLiteral("Uploading...") &&
           run.driver->ready(QStringLiteral("cancelUploadButton"));
}

bool EndToEndTest::largeFileArrives(Run& run)
{
    if (!run.isRegistered() || run.videos().size() != 1 || run.driver->textOf(statusLine) != completed) {
        return false;
    }
    const QByteArray blob = m_azurite->readBlob(run.videos().front().uploadedUrl);
    return blob.size() == largeFile && blob.count('\0') == largeFile;
}

void EndToEndTest::aStoreThatComesBackIsWaitedFor()
{
    Run run(m_azurite->store());
    QVERIFY(loseStore(run));
    QVERIFY(run.videos().empty());
    m_azurite->start();
    QVERIFY(largeFileArrives(run));
}

void EndToEndTest::anUploadToAStoreThatIsGoneCanBeCancelled()
{
    Run run(m_azurite->store());
    QVERIFY(loseStore(run));
    QVERIFY(run.driver->click(QStringLiteral("cancelUploadButton")));
    QVERIFY(run.driver->shows(statusLine, QStringLiteral("Upload canceled")));
    m_azurite->start();
    QVERIFY(run.driver->click(uploadButton));
    QVERIFY(largeFileArrives(run));
    const UploadActivity& activity = *run.program.application().uploadActivity();
    QVERIFY(WindowDriver::await(QStringLiteral("both uploads to end"), [&] { return !activity.underWay(); }));
    QCOMPARE(run.driver->textOf(statusLine), completed);
}

int main(int argc, char** argv)
{
    prepareProcess();
    const QGuiApplication application(argc, argv);
    EndToEndTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_endtoend.moc"
