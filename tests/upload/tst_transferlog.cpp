#include "upload/ToolReport.h"
#include "upload/TransferLog.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <clocale>
#include <cmath>

using namespace tessary;

class TransferLogTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void processOutput_data();
    void processOutput();
    void numbersIgnoreTheUsersLocale();
    void progressTakesWhateverReadsAsANumber();
    void keepsNoMoreMemoryThanItNeeds();
    void keepsTheLastCharacters_data();
    void keepsTheLastCharacters();
};

void TransferLogTest::processOutput_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("gained");
    QTest::addColumn<double>("progress"); // from 0.6 before the text

    const double unchanged = 0.6;
    const auto row = [](const char* name, const char* text, const char* gained, double progress) {
        QTest::newRow(name) << QString::fromUtf8(text) << QString::fromUtf8(gained) << progress;
    };
    row("report with rate", "\r45.5 %, 3 Done (Mb/s): 80.25", "45.5%: 80.25 (Mb/s)\n", 0.455);
    row("report without rate", "100.0 %, all done", "100.0%\n", 1.0);
    row("nothing done yet", "0.0 %, starting", "0.0%\n", unchanged);
    row("plain line", "Job started\n", "Job started\n\n", unchanged);
    row("update notice", "A newer version 10.33 is available", "", unchanged);
    row("log file notice", "INFO: Log file is located at: /x", "", unchanged);
    row("summary with a report", "\r100.0 %, done\nNumber of File Transfers: 1", "", unchanged);
    row("words in another case", "a newer version", "a newer version\n", unchanged);
    row("no space before the sign", "45.5% done", "0.0%\n", unchanged);
    row("standard error", "ERROR: 50.0 % of it failed", "0.0%\n", unchanged);
    row("two reports", "\r1.0 %, (Mb/s): 2.5\r3.0 %, (Mb/s): 4.5", "1.0%: 2.5\r3.0 %,  (Mb/s)\n", 0.01);
    row("rate and line break", "7 %, (Mb/s): 1.5\n", "7.0%: 1.5\n (Mb/s)\n", 0.07);
    row("rate without colon", "7 %, 5 (Mb/s)", "7.0%\n", 0.07);
    row("rate at once", "(Mb/s): 5 %", "0.0%: 5 % (Mb/s)\n", unchanged);
    row("returns at both ends", "\r\r12.25\r\r %", "12.25%\n", 0.1225);
    row("line feed in front", "\n5.0 %", "0.0%\n", unchanged);
    row("space in front", " 5.0 %", "0.0%\n", unchanged);
    row("space behind", "5.0  %", "0.0%\n", unchanged);
    row("comma for a point", "45,5 %", "0.0%\n", unchanged);
    row("empty number", " % x", "0.0%\n", unchanged);
    row("hexadecimal", "0x10 %", "16.0%\n", 0.16);
    row("exponent", "1e2 %", "100.0%\n", 1.0);
    row("shortest form", "0.1 %", "0.1%\n", 0.001);
    row("large", "123456789012 %", "123456789012.0%\n", 1234567890.12);
    row("negative", "-5 %", "-5.0%\n", -0.05);
    row("negative zero", "-0 %", "-0.0%\n", unchanged);
    row("name with a percent sign", "Video uploaded. Library ID: 7, Name: 50 % off\n", "0.0%\n", unchanged);
    row("empty", "", "\n", unchanged);
}

void TransferLogTest::processOutput()
{
    QFETCH(QString, text);
    QFETCH(QString, gained);
    QFETCH(double, progress);

    TransferLog log;
    log.processOutput(QStringLiteral("60 %"));
    const QString before = log.logs();
    const auto effect = log.processOutput(text);
    QCOMPARE(log.logs(), before + gained);
    QCOMPARE(log.progress(), progress);
    QCOMPARE(effect == TransferLog::Effect::Ignored, gained.isEmpty());

    log.clear();
    QCOMPARE(log.logs(), QString());
    QCOMPARE(log.progress(), 0.0);
}

void TransferLogTest::numbersIgnoreTheUsersLocale()
{
    // Made here: machines seldom have one with a decimal comma.
    const QTemporaryDir locales;
    QProcess maker;
    maker.start(QStringLiteral("localedef"),
                {QStringLiteral("-i"), QStringLiteral("de_DE"), QStringLiteral("-f"), QStringLiteral("UTF-8"),
                 locales.filePath(QStringLiteral("comma"))});
    QVERIFY2(maker.waitForFinished(-1) && maker.exitCode() == 0, maker.readAllStandardError().constData());
    qputenv("LOCPATH", locales.path().toLocal8Bit());
    QVERIFY(std::setlocale(LC_ALL, "comma") != nullptr);
    QCOMPARE(std::localeconv()->decimal_point, ",");

    TransferLog log;
    log.processOutput(QStringLiteral("45.5 %"));
    std::setlocale(LC_ALL, "C");
    QCOMPARE(log.logs(), QStringLiteral("45.5%\n"));
}

void TransferLogTest::progressTakesWhateverReadsAsANumber()
{
    TransferLog log;
    log.processOutput(QStringLiteral("inf %"));
    QVERIFY(std::isinf(log.progress()));
    log.processOutput(QStringLiteral("nan %"));
    QVERIFY(std::isnan(log.progress()));
    log.processOutput(QStringLiteral("-nan %"));
    log.processOutput(QStringLiteral("-1e999 %"));
    QCOMPARE(log.progress(), -std::numeric_limits<double>::infinity());
    QCOMPARE(log.logs(), QStringLiteral("inf%\nnan%\nnan%\n-inf%\n"));
}

void TransferLogTest::keepsNoMoreMemoryThanItNeeds()
{
    TransferLog log;
    ToolReport report;
    for (int chunk = 0; chunk < 1000; ++chunk) {
        const auto [shown, asked] = std::pair(log.logs(), report.lastWords); // as a screen holds them
        const QString output = QStringLiteral("x").repeated(1000);
        log.processOutput(output);
        report.hear(output);
    }
    QVERIFY(log.logs().capacity() < 4 * TransferLog::maxLogLength);
    QVERIFY(report.lastWords.capacity() < 4 * ToolReport::maxLastWords);
}

void TransferLogTest::keepsTheLastCharacters_data()
{
    QTest::addColumn<QString>("character"); // one that a person sees
    QTest::newRow("letter") << QStringLiteral("x");
    QTest::newRow("accented letter") << QStringLiteral("é");
    QTest::newRow("combining accent") << QString::fromUtf8("e\xcc\x80");
    QTest::newRow("carriage return and line feed") << QStringLiteral("\r\n");
    QTest::newRow("family") << QString::fromUtf8("👨‍👩‍👧");
    QTest::newRow("flag") << QString::fromUtf8("🇫🇷");
}

void TransferLogTest::keepsTheLastCharacters()
{
    QFETCH(QString, character);
    constexpr int limit = 10'000;

    // 9,995 characters and then 21: the first 16 go, and nothing of a character stays behind.
    TransferLog log;
    log.processOutput(QStringLiteral("a").repeated(10) + character.repeated(limit - 5 - 10 - 1));
    log.processOutput(character.repeated(20));
    QCOMPARE(log.logs(), character.repeated(limit - 5 - 10 - 1 - 6) + u'\n' + character.repeated(20) + u'\n');

    // As many as there is room for stay, to the first.
    const QString full = u'\n' + character.repeated(limit - 2);
    TransferLog filled;
    filled.processOutput(full);
    QCOMPARE(filled.logs(), full + u'\n');

    // An accent that comes later joins the character before it; a sign never joins its neighbour.
    TransferLog joined;
    joined.processOutput(character.repeated(limit));
    QCOMPARE(joined.logs(), character.repeated(limit - 1) + u'\n');
    joined.processOutput(QString::fromUtf8("☀🇫🇷"));
    QCOMPARE(joined.logs(), character.repeated(limit - 4) + u'\n' + QString::fromUtf8("☀🇫🇷\n"));
}

QTEST_GUILESS_MAIN(TransferLogTest)
#include "tst_transferlog.moc"
