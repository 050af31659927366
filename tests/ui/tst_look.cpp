#include "ui/look/Spring.h"
#include "ui/look/SpringValue.h"
#include "ui/pickers/FileUrl.h"

#include <QDirIterator>
#include <QRegularExpression>
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
    void screensHoldNoMarkupAndNoValues_data();
    void screensHoldNoMarkupAndNoValues();
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
    const auto pull = [=](double x, double v) { return -stiffness * x - friction * v; };
    const look::Spring spring(response, damping);
    const look::Spring::Motion start{1, velocity};
    double x = start.distance;
    double v = start.velocity;
    constexpr double step = 0.0005;
    for (int count = 1; count <= 2000; ++count) { // Runge-Kutta of the fourth order over one second
        const double k1x = v, k1v = pull(x, v);
        const double k2x = v + step / 2 * k1v, k2v = pull(x + step / 2 * k1x, k2x);
        const double k3x = v + step / 2 * k2v, k3v = pull(x + step / 2 * k2x, k3x);
        const double k4x = v + step * k3v, k4v = pull(x + step * k3x, k4x);
        x += step / 6 * (k1x + 2 * k2x + 2 * k3x + k4x);
        v += step / 6 * (k1v + 2 * k2v + 2 * k3v + k4v);
        const auto motion = spring.after(count * step, start);
        QVERIFY2(std::abs(motion.distance - x) < 1e-7, qPrintable(QString::number(count)));
        QVERIFY2(std::abs(motion.velocity - v) < 1e-5, qPrintable(QString::number(count)));
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
    QTest::newRow("path as url") << QVariant(QUrl(u"/a.mov"_s)) << u"/a.mov"_s;
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

void LookTest::screensHoldNoMarkupAndNoValues_data()
{
    QTest::addColumn<QString>("file");
    for (const char* folder : {"/ui", "/app"}) {
        for (QDirIterator all(QLatin1StringView(TESSARY_SOURCES) + QLatin1StringView(folder), {"*.qml"_L1},
                              QDir::Files, QDirIterator::Subdirectories);
             all.hasNext();) {
            const QString file = all.next();
            QTest::newRow(qPrintable(file.section(u'/', -2))) << file;
        }
    }
}

/// A text on automatic format would load what a name tells it to; a colour, a font size or a curve of a
/// screen's own would not follow the look.
void LookTest::screensHoldNoMarkupAndNoValues()
{
    QFETCH(QString, file);
    QFile source(file);
    QVERIFY(source.open(QFile::ReadOnly));
    const QString text = QString::fromUtf8(source.readAll());
    static const QRegularExpression rawText(uR"((?m)^[^/\n]*\b(Text|Label|ToolTip|TextArea)\s*\{)"_s);
    static const QRegularExpression rawEdit(uR"(\bTextEdit\s*\{(?![^}]*textFormat: TextEdit\.PlainText))"_s);
    static const QRegularExpression value(
        uR"(["']#[0-9a-fA-F]{3,8}|Qt\.rgba|pixelSize|pointSize|easing\.)"_s);
    if (!file.endsWith("/StyledText.qml"_L1) && !file.endsWith("/TipBubble.qml"_L1)) {
        QVERIFY2(!rawText.match(text).hasMatch(), qPrintable(rawText.match(text).captured()));
    }
    QVERIFY(!rawEdit.match(text).hasMatch());
    if (!file.contains("/ui/look/"_L1)) {
        QVERIFY2(!value.match(text).hasMatch(), qPrintable(value.match(text).captured()));
    }
}

QTEST_GUILESS_MAIN(LookTest)

#include "tst_look.moc"
