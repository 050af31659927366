#include "upload/FailureReason.h"
#include "upload/FailureReport.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace tessary;

/// Why an upload failed, found in what a tool left behind. What the real tool leaves is tried end to end.
class FailureReportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void explains_data();
    void explains();
    void keepsSecrets_data();
    void keepsSecrets();
    void readsTheEndOfTheLog_data();
    void readsTheEndOfTheLog();
};

void FailureReportTest::explains_data()
{
    QTest::addColumn<QByteArray>("log");
    QTest::addColumn<QString>("lastWords");
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("line");
    const auto row = [](const char* name, const QByteArray& log, const char* lastWords, const char* words,
                        const char* line) {
        QTest::newRow(name) << log << QString(lastWords) << QString(words) << QString(line);
    };
    const char* finish = "The tool could not finish the upload. This is what it says:";
    const QByteArray failed = "2026/01/01 ERR: [P#0-T#0] UPLOADFAILED: /v.mov : ";
    row("the last failure counts", failed + "403 : 403 No.\n" + failed + "404 : ContainerNotFound\nlater\n",
        "", "The place that the upload was sent to does not exist any more.",
        "2026/01/01 ERR: [P#0-T#0] UPLOADFAILED: /v.mov : 404 : ContainerNotFound");
    const auto known = [&](const char* words, std::initializer_list<const char*> signs) {
        for (const char* sign : signs) {
            row(sign, failed + "\xff " + sign + ' ', "", words, nullptr);
        }
    };
    known("The file changed while it was uploaded. Upload it again when it is finished.",
          {"modified during transfer", "EOF. When chunk data read"});
    known("There is no space left for the upload.",
          {"no space left", "InsufficientStorage", "QuotaExceeded", ": 507 :"});
    known("The file cannot be read. It may have been moved, or you may not be allowed to open it.",
          {"Permission denied", "no such file", "operation not permitted", "input/output error"});
    known("This is a folder. Choose a single file.", {"cannot use directory as source"});
    known("The place that the upload was sent to does not exist any more.",
          {"ContainerNotFound", "container does not exist", "container is being deleted"});
    known("The upload link has expired or was refused. Upload again to get a new one.",
          {": 401 :", ": 403 :", "RESPONSE 401", "AuthenticationFailed", "Authentication failed",
           "AuthorizationFailure", "AuthorizationPermissionMismatch"});
    known("The store cannot be reached. Check the connection to the network.",
          {"dial tcp", "no such host", "connection refused", "connection reset", "network is unreachable",
           "no route to host", "i/o timeout", "TLS handshake", "context deadline exceeded",
           "server misbehaving", ": 503 :"});
    row("only the output", "",
        "INFO: Scanning...\nCannot do it, the moon is full\nNumber of errors: 1\nFinal Job Status: Failed\n"
        "Log file is located at: /errors.log\n",
        finish, "Cannot do it, the moon is full");
    row("only a request's error", "2026 ==> REQUEST ERROR dial tcp: lookup x: no such host\nmore\n", "",
        "The store cannot be reached. Check the connection to the network.", nullptr);
    row("only a denial", "", "It was denied.\nGood bye.\n", finish, "It was denied.");
    row("any words", "", "Good bye.\r\n\r\n", finish, "Good bye.");
    const QByteArray endless = failed + QByteArray("ab ").repeated(1000);
    row("a long line", endless + "no space left", "", finish, endless.left(600));
    row("none", "", "", "The tool ended without saying why.", "");
    row("bytes of no text", QByteArray("\xff\0\xfe\n", 4) + failed + "\xff 403 : no", "", finish, nullptr);
}

void FailureReportTest::explains()
{
    QFETCH(QByteArray, log);
    QFETCH(QString, lastWords);
    QFETCH(QString, words);
    QFETCH(QString, line);
    const FailureReason reason = explainFailure(log, lastWords);
    QCOMPARE(reason.words, words);
    if (!line.isNull()) {
        QCOMPARE(reason.line, line);
    }
}

void FailureReportTest::keepsSecrets_data()
{
    QTest::addColumn<QString>("clean");
    const auto row = [](const char* text, const char* clean) { QTest::newRow(text) << QString(clean); };
    row("PUT https://a.example/c/v.mov?sv=1&sig=abc%2Fd HTTP", "PUT https://a.example/c/v.mov?… HTTP");
    row("refused: se=2030-01-01&sp=cw&SIG=Ab+/=9&x=1", "refused: se=…&sp=…&SIG=…&x=1");
    row("Authorization: Bearer abc.def", "Authorization: …");
    row("api-key: 1234 and token=5678", "api-key: … and token=…");
    row("sig%3dabc", "sig%3d…");
    row("access_token=ab; AccountKey=cd", "access_token=…; AccountKey=…");
    row("{\"client_secret\":\"ab\"}", "{\"client_secret\":\"…\"}");
    row("Authorization: Basic YWI6Y2Q=", "Authorization: …");
    row("it was AbCdEfGhIjKlMnOp/QrStUvWxYz/0123456789ab=", "it was …");
    row("it was eyJhbGci.eyJzdWIi.SflKxw", "it was …");
    row("it was AbCdEfGhIjKlMnOpQrStUvWxYz0123456789abcdef=", "it was …");
    row("/videos/clip one.mov : 403 : no", "/videos/clip one.mov : 403 : no");
}

void FailureReportTest::keepsSecrets()
{
    QFETCH(QString, clean);
    QCOMPARE(withoutSecrets(QTest::currentDataTag()), clean);
}

void FailureReportTest::readsTheEndOfTheLog_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("isThere");
    QTest::addColumn<QString>("words");
    const QByteArray failed = "UPLOADFAILED: v : 403 : no\n";
    const QString refused = "The upload link has expired";
    const QString unknown = "The tool could not finish";
    const QByteArray much(256 * 1024, 'x');
    QTest::newRow("short") << failed << true << refused;
    QTest::newRow("long, at its end") << much + much + '\n' + failed << true << refused;
    QTest::newRow("long, too far from its end") << failed + '\n' + much << true << unknown;
    QTest::newRow("empty") << QByteArray() << true << unknown;
    QTest::newRow("missing") << QByteArray() << false << unknown;
}

void FailureReportTest::readsTheEndOfTheLog()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, isThere);
    QFETCH(QString, words);
    const QTemporaryDir folder;
    const QString path = folder.filePath("tool.log");
    if (isThere) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    ToolReport tool;
    tool.hear("\nJob 1 has started\n");
    tool.hear("Log file is located at: " + path + "\nand so on\n");
    tool.hear("it gave up\n");
    tool.hear("\r12.0 %, 0 Done, 2-sec Throughput (Mb/s): 1");
    QVERIFY(tool.lastWords.startsWith("\nJob 1") && tool.lastWords.endsWith("Throughput (Mb/s): 1"));
    ToolReport talkative = tool;
    talkative.hear(QString(7990, 'x'));
    QCOMPARE(talkative.lastWords, " (Mb/s): 1" + QString(7990, 'x'));
    FailureReport report(tool);
    const QSignalSpy changed(&report, &FailureReport::changed);
    QCOMPARE(report.line(), "it gave up");
    QTRY_COMPARE(changed.count(), isThere ? 1 : 0);
    QVERIFY2(report.words().startsWith(words), qPrintable(report.words()));
    QCOMPARE(report.logFile(), isThere ? QUrl::fromLocalFile(path) : QUrl());

    QVERIFY(mkfifo(folder.filePath("pipe").toLocal8Bit().constData(), 0600) == 0);
    tool.logFile = folder.filePath("pipe");
    QVERIFY(FailureReport(tool).logFile().isEmpty()); // opening it would wait for ever
}

QTEST_GUILESS_MAIN(FailureReportTest)
#include "tst_failurereport.moc"
