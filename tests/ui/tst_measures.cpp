#include "testkit/ProgramFixture.h"

#include <QImage>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QTest>

#include <cmath>
#include <utility>
#include <vector>

using namespace tessary;

namespace {

QRectF placeOf(const QQuickItem& item)
{
    return item.mapRectToScene(QRectF(QPointF(), item.size()));
}

/// How light a colour is, for telling pixels apart.
int tone(QRgb pixel)
{
    return qRed(pixel) + qGreen(pixel) + qBlue(pixel);
}

} // namespace

/// Where things lie, in points, and how sharply, in device pixels. Run once for each scale of the screen.
class MeasuresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup() { m_fixture.reset(); }

    void gaps_data();
    void gaps();
    void outlinesAreSharp_data();
    void outlinesAreSharp();
    void barsCoverWholePixels_data();
    void barsCoverWholePixels();
    void buttonsKeepTheirPadding();
    void statusRowKeepsItsPlace();
    void cardsCastTheirShadow();

private:
    [[nodiscard]] QRectF place(const char* name) const { return placeOf(*m_fixture->item(name)); }

    [[nodiscard]] double pixel() const { return 1 / m_fixture->window().effectiveDevicePixelRatio(); }

    std::unique_ptr<testkit::ProgramFixture> m_fixture;
};

void MeasuresTest::init()
{
    m_fixture = std::make_unique<testkit::ProgramFixture>();
    QVERIFY(m_fixture->showUploader());
    QCOMPARE(m_fixture->window().rendererInterface()->graphicsApi() == QSGRendererInterface::Software,
             qgetenv("QT_QUICK_BACKEND") == "software");
}

void MeasuresTest::gaps_data()
{
    QTest::addColumn<int>("width");
    for (const int width : {900, 1000, 1001, 1337}) {
        QTest::addRow("%d", width) << width;
    }
}

void MeasuresTest::gaps()
{
    QFETCH(int, width);
    m_fixture->window().resize(width, 700);
    QTRY_COMPARE(placeOf(*m_fixture->window().contentItem()).width(), double(width));
    QVERIFY(!m_fixture->window().grabWindow().isNull()); // all is laid out by then
    constexpr double padding = 16;
    constexpr double spacing = 5;
    const QRectF form = place("formCard");
    const QRectF line = place("cardDivider");
    const QRectF log = place("logCard");
    QCOMPARE(form.left(), padding);
    QCOMPARE(line.left() - form.right(), padding + spacing);
    QCOMPARE(line.width(), 1.0);
    QCOMPARE(log.left() - line.right(), padding + spacing);
    QCOMPARE(log.right(), width - padding);
    QVERIFY(std::abs(form.width() - log.width()) <= pixel() * 1.001);
    QCOMPARE(form.top(), log.top());
    QCOMPARE(form.height(), log.height());
    QCOMPARE(line.top() - form.top(), padding);

    const QRectF row = place("nameField"); // as wide as the form
    const QList<QRectF> options{place("perspectiveOption:60"), place("perspectiveOption:180"),
                                place("perspectiveOption:360")};
    QCOMPARE(options.front().left(), row.left());
    QVERIFY(std::abs(options.back().right() - row.right()) <= pixel() / 2 + 1e-6);
    for (qsizetype at = 0; at < options.size(); ++at) {
        QVERIFY(std::abs(options[at].width() - row.width() / 3) < pixel());
        QVERIFY(at == 0 || std::abs(options[at].left() - options[at - 1].right()) < 1e-6);
    }
}

void MeasuresTest::outlinesAreSharp_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("upright"); // the left edge rather than the upper one
    for (const char* name : {"formatOption:2D", "formatOption:Separate", "nameField", "perspectiveOption:180",
                             "perspectiveOption:360"}) {
        QTest::addRow("above %s", name) << QByteArray(name) << false;
    }
    for (const char* name : {"formatOption:2D", "formatOption:Separate", "nameField"}) {
        QTest::addRow("beside %s", name) << QByteArray(name) << true;
    }
}

void MeasuresTest::barsCoverWholePixels_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("across");  // from left to right rather than from above
    QTest::addColumn<double>("along"); // in points from the item's beginning, where it is looked at
    QTest::newRow("divider") << QByteArray("cardDivider") << true << 60.0;
    QTest::newRow("dot") << QByteArray("stateDot") << false << 4.0;
    QTest::newRow("track") << QByteArray("progressBar") << false << 90.0;
    QTest::newRow("fill") << QByteArray("progressFill") << false << 10.0;
    QTest::newRow("button of a question") << QByteArray("declineButton") << false << 20.0;
}

/// From one side to the other there is what lies around, as many device pixels as there should be in one
/// tone, and what lies around again.
void MeasuresTest::barsCoverWholePixels()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, across);
    QFETCH(double, along);
    FileUploaderState& state = m_fixture->state();
    state.enter(UploadState::Requesting);
    state.processOutput("\r50.0 %, 0 Done, 0 Failed, 1 Pending, 0 Skipped, 1 Total, ");
    const auto underWay = m_fixture->application().uploadActivity()->beginRegistration();
    if (name == "declineButton") {
        QVERIFY(!m_fixture->window().close());
    }
    QVERIFY(m_fixture->driver().ready(name));
    QTRY_COMPARE(place("progressFill").width(), 50.0);
    const QImage picture = m_fixture->window().grabWindow();
    const double scale = 1 / pixel();
    const QRectF shape = place(name.constData());
    const int from = int((across ? shape.left() : shape.top()) * scale) - 3;
    const int size = qRound((across ? shape.width() : shape.height()) * scale);
    const int other = int(((across ? shape.top() : shape.left()) + along) * scale);
    const auto at = [&](int step) {
        return tone(across ? picture.pixel(from + step, other) : picture.pixel(other, from + step));
    };
    const int around = at(0);
    const int inside = at(3 + size / 2);
    int covered = 0;
    for (int step = 1; step < size + 6; ++step) {
        const double share = double(at(step) - around) / (inside - around);
        QVERIFY2(share < 0.1 || share > 0.88, qPrintable(QString::number(share))); // a dot is round
        covered += share > 0.5 ? 1 : 0;
    }
    QCOMPARE(covered, std::max(size, 1));
}

/// Across an edge there is what is outside, a line of one tone and of whole device pixels, and what is
/// inside.
void MeasuresTest::outlinesAreSharp()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, upright);
    m_fixture->window().resize(1000, 900); // the whole form, however small the screen is
    QTRY_COMPARE(placeOf(*m_fixture->window().contentItem()).height(), 900.0);
    const QImage picture = m_fixture->window().grabWindow();
    const QRectF shape = place(name.constData());
    const double scale = 1 / pixel();
    const QPointF across = upright ? QPointF(1, 0) : QPointF(0, 1);
    const QPointF edge = upright ? QPointF(shape.left(), shape.top() + shape.height() / 2)
                                 : QPointF(shape.left() + 20, shape.top());
    const QPoint outside = (edge * scale).toPoint() - (4 * across).toPoint();
    std::vector<std::pair<int, int>> runs; // of pixels in one tone: the tone, and how many
    for (int step = 0; step < 10; ++step) {
        const int here = tone(picture.pixel(outside + (step * across).toPoint()));
        if (runs.empty() || runs.back().first != here) {
            runs.emplace_back(here, 0);
        }
        ++runs.back().second;
    }
    // A line on the edge lies half on what is outside and half on what is inside.
    const std::size_t tones = runs.size() - 2;
    QVERIFY2(tones == 1 || (tones == 2 && qRound(scale) % 2 == 0), qPrintable(QString::number(tones)));
    int linePixels = 0;
    for (std::size_t at = 1; at <= tones; ++at) {
        QVERIFY(runs[at].first + 100 < std::min(runs.front().first, runs.back().first));
        linePixels += runs[at].second;
    }
    QCOMPARE(linePixels, std::max(1, qRound(scale)));
}

void MeasuresTest::buttonsKeepTheirPadding()
{
    m_fixture->application().appManager()->setEditingAPIKey(true);
    QVERIFY(m_fixture->driver().ready("cancelKeyButton"));
    for (const char* name : {"submitKeyButton", "cancelKeyButton"}) {
        const auto* text = m_fixture->item(name)->property("contentItem").value<QQuickItem*>();
        QCOMPARE(m_fixture->item(name)->height(), text->implicitHeight() + 2 * 8);
    }
}

/// What is in the row stands side by side, and the log stays where it is whatever there is.
void MeasuresTest::statusRowKeepsItsPlace()
{
    constexpr double padding = 16;
    constexpr double spacing = 8;
    FileUploaderState& state = m_fixture->state();
    const double log = place("logText").top() - 5;
    state.enter(UploadState::Requesting);
    QVERIFY(m_fixture->driver().ready("cancelUploadButton"));
    const QRectF line = place("statusLine");
    const QRectF bar = place("progressBar");
    QCOMPARE(place("stateDot").left(), place("logCard").left() + padding);
    QCOMPARE(line.left(), place("stateDot").right() + spacing);
    QCOMPARE(line.width(), std::ceil(m_fixture->item("statusLine")->implicitWidth()));
    QCOMPARE(bar.left(), line.right() + spacing);
    const auto* cross = m_fixture->item("cancelUploadButton")->property("contentItem").value<QQuickItem*>();
    QCOMPARE(placeOf(*cross).left(), bar.right() + spacing + 5);
    QCOMPARE(place("logText").top() - 5, log);
    state.takeToolReport({{}, "UPLOADFAILED: refused"});
    state.enter(UploadState::Failed, "refused");
    QVERIFY(m_fixture->driver().ready("whyButton"));
    const auto* plate = m_fixture->item("whyButton")->property("background").value<QQuickItem*>();
    QCOMPARE(log - placeOf(*plate).bottom(), 2.0);
    QCOMPARE(place("logText").top() - 5, log);
}

void MeasuresTest::cardsCastTheirShadow()
{
    const QImage picture = m_fixture->window().grabWindow();
    const QRectF card = place("formCard");
    const auto at = [&](double y) {
        return tone(picture.pixel((QPointF(card.center().x(), y) / pixel()).toPoint()));
    };
    QVERIFY(at(card.bottom() + 2) < at(card.top() - 10) - 20);
}

QTEST_MAIN(MeasuresTest)

#include "tst_measures.moc"
