#include "upload/TransferEstimate.h"
#include "upload/TransferProgress.h"
#include "upload/TransferWords.h"

#include <QSignalSpy>
#include <QTemporaryFile>
#include <QTest>
#include <QTimer>

#include <cmath>
#include <functional>
#include <numeric>

using namespace tessary;
using namespace std::chrono_literals;
using Time = TransferEstimate::Time;
using Rate =
    std::function<double(Time)>; ///< of the connection, in bytes a second; the files under way share it

/// How much is left and for how long, told from what tools report every 2 s in tenths of a per cent.
class EstimateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isNearTheTruth_data();
    void isNearTheTruth();
    void knowsNothingBeforeTheSecondStep();
    void standsStillOnlyWhenNothingMoves();
    void beginsAnew();
    void words_data();
    void words();
    void wordsDoNotJitter();
    void progressOfAnUpload();
};

void EstimateTest::isNearTheTruth_data()
{
    QTest::addColumn<QList<qint64>>("sizes");
    QTest::addColumn<Rate>("rate");
    QTest::addColumn<double>("error"); // the largest share by which it is wrong, once it says something
    const auto steady = [](double rate) { return Rate([rate](Time) { return rate; }); };
    QTest::newRow("steady") << QList<qint64>{10'000'000'000} << steady(20e6) << 0.05;
    QTest::newRow("steady, a step in 65 s") << QList<qint64>{812'000'000'000} << steady(12.5e6) << 0.02;
    QTest::newRow("two files") << QList<qint64>{30'000'000'000, 20'000'000'000} << steady(20e6) << 0.25;
    QTest::newRow("bursts") << QList<qint64>{50'000'000'000}
                            << Rate([](Time at) { return at % 10s < 5s ? 40e6 : 0.0; }) << 0.3;
    QTest::newRow("twice as slow later")
        << QList<qint64>{50'000'000'000} << Rate([](Time at) { return at < 600s ? 50e6 : 25e6; }) << 0.55;
}

void EstimateTest::isNearTheTruth()
{
    QFETCH(QList<qint64>, sizes);
    QFETCH(Rate, rate);
    QFETCH(double, error);
    constexpr Time tick = 2s;

    struct Moment
    {
        Time at;
        std::optional<Time> left;
    };

    std::vector<Moment> told;
    TransferEstimate estimate(sizes, 0ms);
    std::vector<double> sent(static_cast<std::size_t>(sizes.size()));
    Time now = 0ms;
    const double all = double(std::accumulate(sizes.begin(), sizes.end(), qint64(0)));
    while (std::accumulate(sent.begin(), sent.end(), 0.0) < all) {
        now += tick;
        double sharers = 0;
        for (std::size_t file = 0; file < sent.size(); ++file) {
            sharers += sent[file] < double(sizes.at(qsizetype(file))) ? 1 : 0;
        }
        for (std::size_t file = 0; file < sent.size(); ++file) {
            const double size = double(sizes.at(qsizetype(file)));
            sent[file] = std::min(size, sent[file] + rate(now) * 2 / sharers);
            const double fraction = std::floor(sent[file] / size * 1000) / 1000;
            estimate.report(file, fraction, QString::number(now.count() % 7), now);
        }
        told.push_back({now, estimate.timeLeft(now)});
    }
    double worst = 0;
    double firstKnown = -1;
    for (const Moment& moment : told) {
        if (!moment.left) {
            QVERIFY(firstKnown < 0); // once known, it stays so
            continue;
        }
        firstKnown = firstKnown < 0 ? double(moment.at.count()) / 1000 : firstKnown;
        const double wrong = std::abs(double((*moment.left - (now - moment.at)).count()));
        // Of the whole: near the end the last step is all that is left.
        worst =
            std::max(worst, wrong / double(std::max<qint64>((now - moment.at).count(), now.count() / 10)));
    }
    qInfo("known after %.0f s, wrong by %.1f %% at most", firstKnown, worst * 100);
    QVERIFY(firstKnown > 0);
    QVERIFY2(worst <= error, QByteArray::number(worst));
}

void EstimateTest::knowsNothingBeforeTheSecondStep()
{
    TransferEstimate estimate({1000}, 0ms);
    for (int step = 1; step <= 2; ++step) {
        estimate.report(0, step / 10.0, {}, step * 1s);
        QVERIFY(!estimate.timeLeft(step * 1s));
    }
    estimate.report(0, 0.3, {}, 3s);
    QCOMPARE(estimate.timeLeft(3s).value_or(0ms), 7s);
    QCOMPARE(estimate.timeLeft(4s).value_or(0ms), 6s);  // as it goes by
    QCOMPARE(estimate.timeLeft(6s).value_or(0ms), 13s); // slower, since no step has come
    QCOMPARE(estimate.bytesSent(), 300);
}

void EstimateTest::standsStillOnlyWhenNothingMoves()
{
    TransferEstimate estimate({1000, 1000}, 0ms);
    for (int step = 1; step <= 5; ++step) {
        estimate.report(0, step / 10.0, "80", step * 1s);
    }
    QVERIFY(estimate.timeLeft(5s + 59s));
    QVERIFY(!estimate.standstill(5s + 59s));
    estimate.report(1, 0, "81", 40s); // the other one's first block is on its way
    QVERIFY(!estimate.standstill(99s));
    estimate.report(1, 0, "81", 90s); // the same again
    QCOMPARE(estimate.standstill(100s).value_or(0ms), 60s);
    QVERIFY(!estimate.timeLeft(100s));
    estimate.report(1, 0.1, "81", 101s);
    QVERIFY(!estimate.standstill(101s));
}

void EstimateTest::beginsAnew()
{
    TransferEstimate estimate({1000}, 0ms);
    for (int step = 1; step <= 5; ++step) {
        estimate.report(0, step / 10.0, {}, step * 1s);
    }
    estimate.report(0, 0.1, {}, 6s); // the tool did
    estimate.report(0, 0.2, {}, 20s);
    QVERIFY(!estimate.timeLeft(20s));
    QCOMPARE(estimate.bytesSent(), 200);
    for (int step = 3; step <= 5; ++step) {
        estimate.report(0, step / 10.0, {}, step * 10s);
    }
    QCOMPARE(estimate.timeLeft(50s).value_or(0ms), 50s); // 300 in the last 30 s
    estimate.startAnew(120s);
    QVERIFY(!estimate.timeLeft(120s) && !estimate.standstill(120s));
    estimate.report(0, qQNaN(), {}, 121s);
    QCOMPARE(estimate.bytesSent(), 500);
}

void EstimateTest::words_data()
{
    QTest::addColumn<Time>("left");
    QTest::addColumn<QString>("inFull");
    QTest::addColumn<QString>("inBrief");
    const auto row = [](Time left, const char* inFull, const char* inBrief) {
        QTest::newRow(inFull) << left << QString(inFull) << QString(inBrief);
    };
    row(0ms, "less than a minute", "less than a minute left");
    row(60s, "about 1 min", "1 min left");
    row(9min + 20s, "about 9 min", "9 min left");
    row(13min, "about 15 min", "15 min left");
    row(62min, "about 1 h", "1 h left");
    row(92min, "about 1 h 30 min", "2 h left");
    row(2h + 13min, "about 2 h 10 min", "2 h left");
    row(50h, "about 50 h", "50 h left");
}

void EstimateTest::words()
{
    QFETCH(Time, left);
    TimeLeftWords words;
    words.take(left);
    QTEST(words.inFull(), "inFull");
    QTEST(words.inBrief(), "inBrief");
    words.take(std::nullopt);
    QVERIFY(words.inFull().isEmpty() && words.inBrief().isEmpty());

    QCOMPARE(sizeInWords(999), "999 bytes");
    QCOMPARE(sizeInWords(1500), "1.5 kB");
    QCOMPARE(sizeInWords(9950), "10 kB");
    QCOMPARE(sizeInWords(1'000'000), "1 MB");
    QCOMPARE(sizeInWords(999'500'000), "1 GB");
    QCOMPARE(sizeInWords(811'900'000'000), "812 GB");
    QCOMPARE(sizeInWords(1'200'000'000'000), "1.2 TB");
    QCOMPARE(sizeInWords(34'000'000'000'000'000), "34 PB");
    QCOMPARE(sizeInWords(std::numeric_limits<qint64>::max()), "9.2 EB");
    QCOMPARE(percentOf(999, 1000), 99);
    QCOMPARE(percentOf(1000, 1000), 100);
    QCOMPARE(percentOf(450'000'003, 1'000'000'007), 45);
    QVERIFY(!percentOf(0, 0));
    QCOMPARE(standstillInWords(179s), "no progress for 2 min");
}

void EstimateTest::wordsDoNotJitter()
{
    TimeLeftWords words;
    words.take(20min);
    for (const Time left : {16min + 15s, 22min + 30s, 18min + 0s, 23min + 0s}) {
        words.take(left);
        QCOMPARE(words.inFull(), "about 20 min");
    }
    words.take(16min);
    QCOMPARE(words.inFull(), "about 15 min");
    for (const Time left : {59s, 61s, 58s, 75s}) {
        words.take(left);
        QCOMPARE(words.inFull(), "less than a minute");
    }
    words.take(80s);
    QCOMPARE(words.inFull(), "about 1 min");

    // Where the steps begin: what was said before, and what comes.
    for (const auto& [said, left] :
         {std::pair(3min, 3min + 40s), {9min, 10min + 0s}, {115min, 120min + 0s}}) {
        words.take(said);
        const QString before = words.inFull();
        words.take(left);
        QCOMPARE(words.inFull(), before);
    }
}

void EstimateTest::progressOfAnUpload()
{
    QTemporaryFile file;
    QVERIFY(file.open() && file.resize(4'000'000));
    desktop::ClockReading clock{1000s, 0s};
    TransferProgress progress({QUrl::fromLocalFile(file.fileName())}, [&clock] { return clock; });
    const QSignalSpy changed(&progress, &TransferProgress::changed);
    const auto words = [&](const char* output) {
        const qsizetype before = changed.count();
        progress.hear(0, output);
        const bool told = QTest::qWaitFor([&] { return changed.count() > before; });
        return told ? progress.inWords() + u'|' + progress.inBrief() : "never told";
    };
    progress.hear(0, "INFO: Scanning...");
    QCOMPARE(words("\r0.0 %, 0 Done"), "0 % of 4 MB|0 %");
    clock.awake += 60s;
    progress.hear(0, "\r25.0 %, 0 Done");
    clock.awake += 60s;
    progress.hear(0, "\r30.0 %, 0 Done");
    clock.awake += 60s;
    QCOMPARE(words("\r35.0 %, 0 Done"), "35 % of 4 MB, about 15 min left|35 % · 15 min left");
    clock.asleep += 1s;
    clock.awake += 2s;
    QCOMPARE(words("\r35.1 %, 0 Done"), "35 % of 4 MB|35 %"); // nothing is known of the time after a sleep
    clock.awake += 125s;
    QCOMPARE(words("\r35.1 %, 0 Done"), "35 % of 4 MB, no progress for 2 min|35 % · no progress for 2 min");
    QCOMPARE(words("ERROR: 99 % of nothing"), progress.inWords() + u'|' + progress.inBrief());
    QCOMPARE(progress.bytesSent(), 1'404'000);

    auto* update = progress.findChild<QTimer*>();
    QCOMPARE(update->intervalAsDuration(), 10s); // however long the tool is silent
    clock.awake += 60s;
    update->setInterval(0);
    QTRY_COMPARE(progress.inBrief(), "35 % · no progress for 3 min");
    progress.hear(0, "\r36.0 %, 0 Done");
    QCOMPARE(update->intervalAsDuration(), 500ms);
}

QTEST_GUILESS_MAIN(EstimateTest)
#include "tst_estimate.moc"
