#include "ui/look/Spring.h"
#include "ui/look/SpringValue.h"
#include "ui/pickers/FileUrl.h"

#include <QSysInfo>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <numbers>

using namespace tessary;
using namespace Qt::StringLiterals;

class LookTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void springKeepsItsLaw_data();
    void springKeepsItsLaw();
    void springValueTurnsBackSmoothly();
    void dropConversion_data();
    void dropConversion();
    void escapeIsOneUnlessOnlyThatFileIsThere();
    void fileKind_data();
    void fileKind();
};

void LookTest::springKeepsItsLaw_data()
{
    QTest::addColumn<double>("response");
    QTest::addColumn<double>("damping");
    QTest::addColumn<double>("velocity");
    QTest::newRow("selection") << 0.3 << 0.825 << 0.0;
    QTest::newRow("logo") << 0.5 << 0.6 << 0.0;
    QTest::newRow("critical") << 0.5 << 1.0 << 0.0;
    QTest::newRow("thrown") << 0.4 << 0.825 << 7.0;
    QTest::newRow("critical, thrown") << 0.4 << 1.0 << -7.0;
}

void LookTest::springKeepsItsLaw()
{
    QFETCH(double, response);
    QFETCH(double, damping);
    QFETCH(double, velocity);
    const double stiffness = std::pow(2 * std::numbers::pi / response, 2);
    const double friction = 4 * std::numbers::pi * damping / response;
    const look::Spring spring(response, damping);
    const auto at = [&](double seconds) { return spring.after(seconds, {1, velocity}); };
    QVERIFY(qFuzzyCompare(at(0).distance, 1) && qFuzzyCompare(at(0).velocity + 10, velocity + 10));
    for (double time = 0; time < 1; time += 0.001) { // each is how the one before it changes
        constexpr double step = 1e-5;
        const double change = (at(time + step).distance - at(time - step).distance) / (2 * step);
        const double force = (at(time + step).velocity - at(time - step).velocity) / (2 * step);
        const auto [distance, speed] = at(time);
        QVERIFY(std::abs(change - speed) < 1e-5);
        QVERIFY(std::abs(force + stiffness * distance + friction * speed) < 1e-3);
    }
}

void LookTest::springValueTurnsBackSmoothly()
{
    look::SpringValue value;
    value.setGoal(1);
    QCOMPARE(value.value(), 1.0); // the first goal is the first value
    value.componentComplete();
    value.setGoal(0);
    int time = 0;
    while (value.value() >= 0.7) {
        value.setCurrentTime(time += 10);
        QVERIFY(time < 300);
    }
    double last = value.value();
    value.setGoal(1);
    QCOMPARE(value.value(), last); // where it was
    QCOMPARE(value.currentTime(), 0);
    double farthest = 0;
    for (time = 0; value.state() == QAbstractAnimation::Running; time += 10) {
        QVERIFY(time < 3000);
        value.setCurrentTime(time);
        farthest = std::max(farthest, std::abs(value.value() - last));
        last = value.value();
    }
    QCOMPARE(value.value(), 1.0);
    QVERIFY2(farthest < 0.15, qPrintable(QString::number(farthest)));
    value.setGoal(0);
    value.setAnimated(false);
    QVERIFY(value.value() == 0 && value.state() == QAbstractAnimation::Stopped);
}

void LookTest::dropConversion_data()
{
    QTest::addColumn<QVariant>("item");
    QTest::addColumn<QString>("path");
    QTest::newRow("bytes") << QVariant(QByteArray("file:///Users/name/clip.mov"))
                           << u"/Users/name/clip.mov"_s;
    QTest::newRow("first of two") << QVariant(QByteArray("file:///a.mov\r\nfile:///b.mov\r\n"))
                                  << u"/a.mov"_s;
    QTest::newRow("escapes") << QVariant(QByteArray("file:///a%20b%25%0Ac.mov")) << u"/a b%\nc.mov"_s;
    QTest::newRow("UTF-8") << QVariant(QByteArray("file:///\xF0\x9F\x8E\xA5.mov"))
                           << QStringLiteral("/🎥.mov");
    QTest::newRow("url") << QVariant(QUrl::fromLocalFile(u"/a#b?c.mov"_s)) << u"/a#b?c.mov"_s;
    QTest::newRow("folder") << QVariant(QUrl(u"file:///clips/"_s)) << u"/clips/"_s;
    QTest::newRow("path") << QVariant(QStringLiteral("/100%25.mov")) << u"/100%25.mov"_s;
    QTest::newRow("this machine") << QVariant(QUrl(u"file://localhost/a.mov"_s)) << u"/a.mov"_s;
    QTest::newRow("this machine by its name")
        << QVariant(QUrl(u"file://"_s + QSysInfo::machineHostName() + u"/a.mov"_s)) << u"/a.mov"_s;
    QTest::newRow("this machine, bytes") << QVariant(QByteArray("file://LOCALHOST/a.mov")) << u"/a.mov"_s;
    QTest::newRow("another machine") << QVariant(QUrl(u"file://elsewhere/a.mov"_s)) << u""_s;
    QTest::newRow("path as url, odd") << QVariant(QUrl(u"/50%, a#b?c d.mov"_s)) << u"/50%, a#b?c d.mov"_s;
    QTest::newRow("path as url, escaped") << QVariant(QUrl(u"/a%20b.mov"_s)) << u"/a b.mov"_s;
    QTest::newRow("web page") << QVariant(QUrl(u"https://example.org/a.mov"_s)) << u""_s;
    QTest::newRow("no path") << QVariant(QUrl(u"file://localhost"_s)) << u""_s;
    QTest::newRow("relative") << QVariant(QStringLiteral("a.mov")) << u""_s;
    QTest::newRow("nothing") << QVariant() << u""_s;
    QTest::newRow("another kind") << QVariant(7) << u""_s;
}

void LookTest::dropConversion()
{
    QFETCH(QVariant, item);
    QFETCH(QString, path);
    QCOMPARE(pickers::fileUrlOf(item), path.isEmpty() ? QUrl() : QUrl::fromLocalFile(path));
}

void LookTest::escapeIsOneUnlessOnlyThatFileIsThere()
{
    const QTemporaryDir folder;
    const QString escaped = folder.filePath(u"a%20b.mov"_s);
    const QString plain = folder.filePath(u"a b.mov"_s);
    const auto read = [&escaped] { return pickers::fileUrlOf(QUrl(escaped)).toLocalFile(); };
    QCOMPARE(read(), plain);
    QVERIFY(QFile(escaped).open(QFile::WriteOnly));
    QCOMPARE(read(), escaped);
    QVERIFY(QFile(plain).open(QFile::WriteOnly));
    QCOMPARE(read(), plain);
}

void LookTest::fileKind_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("kind");
    QTest::newRow("extension") << u"/c.mov"_s << u"MOV file"_s;
    QTest::newRow("last of two") << u"/clip.tar.gz"_s << u"GZ file"_s;
    QTest::newRow("none") << u"/clip"_s << u" file"_s;
    QTest::newRow("hidden") << u"/.clip"_s << u" file"_s;
    QTest::newRow("folder") << u"/clips.d/"_s << u"D file"_s;
}

void LookTest::fileKind()
{
    QFETCH(QString, path);
    QFETCH(QString, kind);
    QCOMPARE(pickers::fileKindOf(QUrl::fromLocalFile(path)), kind);
}

QTEST_GUILESS_MAIN(LookTest)

#include "tst_look.moc"
