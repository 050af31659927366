#include "tests/support/CapturedOutput.h"
#include "tests/support/FaultFixture.h"

#include <QProcess>

using namespace tessary;
using namespace std::chrono_literals;
using standins::Breakage;
using standins::Fault;
using standins::LocalService;
using Sent = Breakage::Sent;
using End = Breakage::End;

namespace {

/// What is wrong with the tool's file.
enum class ToolFile { Good, Missing, NotExecutable };

/// Long enough for the next upload's answers on a busy machine.
constexpr std::chrono::milliseconds shortLimit = 3s;

const QString late = QStringLiteral("The service did not answer within 3 seconds.");

/// @param words in which each "*" stands for anything
bool says(const QString& text, const QString& words)
{
    const QString pattern =
        QRegularExpression::escape(words).replace(QStringLiteral("\\*"), QStringLiteral(".*"));
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(text).hasMatch();
}

/// The upload has failed with these words; or succeeded, when there are none.
void checkEnd(const FaultFixture& fixture, const QByteArray& printed, const QString& words)
{
    const QString status = fixture.screen->statusMessage();
    QVERIFY(!fixture.screen->isUploading());
    if (words.isEmpty()) {
        QCOMPARE(status, statusMessageOf(UploadState::Completed));
        QVERIFY2(fixture.screen->logs().endsWith(registered), qPrintable(fixture.screen->logs()));
        QCOMPARE(fixture.registrations(), std::size_t{1});
        return;
    }
    QVERIFY2(says(status, QLatin1StringView("Error: ") + words), qPrintable(status));
    QVERIFY2(fixture.screen->logs().endsWith(QLatin1StringView("Upload ") + status + u'\n'),
             qPrintable(fixture.screen->logs()));
    QCOMPARE(printed, status.mid(7).toUtf8() + '\n');
    QCOMPARE(fixture.registrations(), std::size_t{0});
}

/// How many descriptors Qt itself leaves open when a launch fails: one end of a pipe in 6.4.
int leftByAFailedLaunch()
{
    const int before = testkit::takeProcessUsage().descriptors;
    {
        QProcess bare;
        bare.start(QStringLiteral("/proc/self/environ"));
        if (!QTest::qWaitFor([&bare] { return bare.error() == QProcess::FailedToStart; }, 20'000)) {
            return 0;
        }
    }
    return testkit::takeProcessUsage().descriptors - before;
}

} // namespace

/// A fault at every step of an upload: what is said of it, that the same screen is ready for the next upload,
/// and that nothing is left of either.
class FaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void service_data();
    void service();
    void tool_data();
    void tool();
    void aToolThatEndsWellWhenCancelled();
    void aToolThatWillNotEnd();

private:
    int m_leftByAFailedLaunch = 0; ///< descriptors, by Qt itself
};

void FaultsTest::initTestCase()
{
    m_leftByAFailedLaunch = leftByAFailedLaunch();
    // What is opened once and kept, TLS included; and the end of the threads, which takes a moment.
    trustUnknownCertificate(true);
    const FaultFixture fixture(patientTool, true);
    fixture.checkNextUpload();
    fixture.checkNothingIsLeft(10);
}

void FaultsTest::service_data()
{
    QTest::addColumn<Trouble>("trouble");
    QTest::addColumn<Fault>("fault");
    QTest::addColumn<bool>("atRegistration");
    QTest::addColumn<QString>("words"); // none when the upload goes well all the same
    QTest::addColumn<bool>("sent");     // whether the request gets as far as the service

    const auto rows = [](const char* name, Trouble trouble, const Fault& fault, const char* ofUrl,
                         const char* ofRegistration) {
        const bool sent = trouble == Trouble::Answer || trouble == Trouble::Restart;
        QTest::addRow("URL: %s", name) << trouble << fault << false << QString::fromUtf8(ofUrl) << sent;
        QTest::addRow("registration: %s", name)
            << trouble << fault << true << QString::fromUtf8(ofRegistration) << sent;
    };
    const auto both = [&rows](const char* name, Trouble trouble, const Fault& fault, const char* words) {
        rows(name, trouble, fault, words, words);
    };
    const auto answer = [&both](const char* name, const Fault& fault, const char* words) {
        both(name, Trouble::Answer, fault, words);
    };
    const char* const cut = "The connection to the service was closed before its answer was complete.";
    const char* const broke = "The connection to the service broke. The request is not sent twice.";
    answer("reset before the answer", Fault::broken(Sent::Nothing, End::Reset), broke);
    answer("closed before the answer", Fault::broken(Sent::Nothing, End::Closed), broke);
    answer("reset within the header", Fault::broken(Sent::HalfTheHeader, End::Reset), broke);
    answer("reset within the body", Fault::broken(Sent::HalfTheBody, End::Reset), cut);
    answer("closed within the body", Fault::broken(Sent::HalfTheBody, End::Closed), cut);
    answer("reset after the answer", Fault::broken(Sent::Everything, End::Reset), "");
    answer("never answered", Fault::neverAnswered(), qPrintable(late));
    answer("answered without end", Fault::endless(), qPrintable(late));
    answer("redirected", Fault::redirected(302, "?again"),
           "The service redirected the request. It is not sent twice.");
    rows("not JSON", Trouble::Answer, Fault::answered({502, "<p>Bad gateway</p>"}),
         "The service did not answer with an upload URL: the answer is not valid JSON (*).",
         "The operation couldn’t be completed. (tessary_macos_uploader.LibraryDataError error 1.)");
    rows("nothing of use", Trouble::Answer, Fault::answered({500, "{}"}),
         "The service did not answer with an upload URL: \"sasUrl\" is missing.",
         "The operation couldn’t be completed. (tessary_macos_uploader.LibraryDataError error 1.)");
    both("restarted meanwhile", Trouble::Restart, {}, broke);
    both("refused", Trouble::ServiceDown, {},
         "The service could not be reached: the connection was refused.");
    both("unknown certificate", Trouble::UnknownCertificate, {},
         "No secure connection to the service could be made: SSL handshake failed: "
         "The certificate is self-signed, and untrusted");
    both("signed out", Trouble::SignedOut, {}, "You have been signed out. Sign in and upload again.");
}

void FaultsTest::service()
{
    QFETCH(Trouble, trouble);
    QFETCH(Fault, fault);
    QFETCH(bool, atRegistration);
    QFETCH(QString, words);
    QFETCH(bool, sent);

    const CapturedOutput output;
    FaultFixture fixture(patientTool, trouble == Trouble::UnknownCertificate,
                         words == late ? shortLimit : standardTimeout);
    if (atRegistration) {
        fixture.upload();
        QVERIFY(fixture.logHas("copying clip.mov"));
        fixture.strike(trouble, LocalService::registrationPath, fault);
        fixture.tool.make("go");
    } else {
        fixture.strike(trouble, LocalService::uploadUrlPath, fault);
        fixture.tool.make("go");
        fixture.upload();
    }
    QVERIFY(fixture.isIdle());
    if (atRegistration && !words.isEmpty()) {
        QCOMPARE(fixture.screen->uploadState(), UploadState::Completed);
        QVERIFY(!fixture.screen->isUploading());
        const QString end = fixture.screen->logs().section(QStringLiteral("\n\n"), -2, -2);
        QVERIFY2(says(end, QLatin1StringView("API Error: ") + words), qPrintable(end));
        QCOMPARE(fixture.registrations(), std::size_t{sent ? 1U : 0U}); // none is sent twice
    } else {
        checkEnd(fixture, output.text(), words);
    }
    fixture.mend(trouble);
    fixture.checkNextUpload();
    fixture.checkNothingIsLeft();
}

void FaultsTest::tool_data()
{
    QTest::addColumn<ToolFile>("file");
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("words"); // none when the upload goes well all the same

    const auto row = [](const char* name, const char* script, const char* words, const char* format = "2D",
                        ToolFile file = ToolFile::Good) {
        QTest::newRow(name) << file << QByteArray(script) << QString::fromUtf8(format)
                            << QString::fromUtf8(words);
    };
    row("missing", "", "AzCopy binary not found", "2D", ToolFile::Missing);
    row("not executable", "", "*Permission denied", "2D", ToolFile::NotExecutable);
    row("fails", "exit 3", "AzCopy exited with code 3");
    row("killed", "kill -KILL $$", "AzCopy exited with code 9");
    row("crashes", "kill -SEGV $$", "AzCopy exited with code 11");
    row("closes its pipes early and fails", "exec >&- 2>&-; sleep 0.2; exit 3", "AzCopy exited with code 3");
    row("closes its pipes early and succeeds", "exec >&- 2>&-; sleep 0.2", "");
    row("leaves its pipes to another", "until [ ! -d $home ]; do sleep 0.05; done & exit 0", "");
    row("both of a pair fail at once",
        "touch \"$home/$(basename \"$2\")\"; until [ -e $home/left.mov -a -e $home/right.mov ]; do :; done; "
        "exit 5",
        "AzCopy exited with code 5", "Separate");
    row("one of a pair fails", "case $2 in *left*) exit 4;; esac", "AzCopy exited with code 4", "Separate");
}

void FaultsTest::tool()
{
    QFETCH(ToolFile, file);
    QFETCH(QByteArray, script);
    QFETCH(QString, format);
    QFETCH(QString, words);

    const CapturedOutput output;
    const FaultFixture fixture(script);
    if (file == ToolFile::Missing) {
        QFile::remove(fixture.tool.path("azcopy"));
    } else if (file == ToolFile::NotExecutable) {
        QFile::setPermissions(fixture.tool.path("azcopy"), QFile::ReadOwner);
    }
    fixture.upload(format);
    QVERIFY(fixture.isIdle());
    checkEnd(fixture, output.text(), words);
    fixture.checkNextUpload();
    fixture.checkNothingIsLeft(file == ToolFile::NotExecutable ? m_leftByAFailedLaunch : 0);
}

void FaultsTest::aToolThatEndsWellWhenCancelled()
{
    const FaultFixture fixture("trap 'exit 0' TERM; echo ready; while :; do sleep 0.02; done");
    fixture.upload();
    QVERIFY(fixture.logHas("ready"));
    fixture.screen->cancelUpload();
    QVERIFY(!fixture.screen->isUploading());
    QVERIFY(fixture.isIdle());
    checkEnd(fixture, {}, {}); // the video is in the store, and no other upload has taken the screen
    fixture.checkNextUpload();
    fixture.checkNothingIsLeft();
}

void FaultsTest::aToolThatWillNotEnd()
{
    const FaultFixture fixture("trap '' TERM; echo ready; while :; do sleep 0.02; done");
    fixture.upload();
    QVERIFY(fixture.logHas("ready"));
    fixture.screen->cancelUpload();
    QVERIFY(!fixture.screen->isUploading());
    QCOMPARE(fixture.screen->statusMessage(), statusMessageOf(UploadState::Cancelled));
    fixture.checkNextUpload(); // while the first one's tool lives on
    QCOMPARE(testkit::takeProcessUsage().children.size(), 1);
    QVERIFY(fixture.app.uploadActivity()->underWay());
    const QString log = fixture.screen->logs();
    Q_EMIT fixture.app.uploadActivity()->killTools();
    fixture.checkNothingIsLeft();
    QCOMPARE(fixture.screen->logs(), log);
    QCOMPARE(fixture.screen->uploadState(), UploadState::Completed);
}

QTEST_GUILESS_MAIN(FaultsTest)
#include "tst_faults.moc"
