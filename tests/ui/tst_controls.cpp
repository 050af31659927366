#include "testkit/ProgramFixture.h"
#include "testkit/SteppedClock.h"
#include "ui/look/BlurredShadow.h"
#include "ui/look/ShadowTile.h"
#include "ui/look/SharedTexture.h"
#include "ui/look/SpokeWheel.h"
#include "ui/look/Squircle.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <algorithm>
#include <functional>

using namespace tessary;

namespace {

class Probe : public look::Squircle
{
public:
    using Squircle::Squircle;

    void paint(QPainter& painter, QSizeF size, qreal scale) const override
    {
        painted.append(size);
        Squircle::paint(painter, size, scale);
    }

    mutable QList<QSizeF> painted; ///< of each picture
};

/// How far any pixel's colours are apart.
int difference(const QImage& one, const QImage& other)
{
    int most = one.size() == other.size() ? 0 : 256;
    for (int y = 0; y < one.height() && most < 256; ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            most = std::max({most, std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                             std::abs(qBlue(a) - qBlue(b))});
        }
    }
    return most;
}

} // namespace

/// What can be pressed is large enough for it, and shows it.
class ControlsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aDrawingIsPaintedWhileItCanBeSeen();
    void picturesLookAsPainted();
    void equalPicturesAreDrawnOnce();
    void showThatTheyArePressed_data();
    void showThatTheyArePressed();

private:
    /// Brings up the screen with that control; waits until it can be pressed.
    [[nodiscard]] bool showScreenOf(const QByteArray& name);

    /// The mean of all parts of all colours of the item's pixels, up to 255, when nothing moves any more.
    [[nodiscard]] double tone(const QQuickItem& item, testkit::SteppedClock& clock) const;

    std::unique_ptr<testkit::ProgramFixture> m_fixture;
};

bool ControlsTest::showScreenOf(const QByteArray& name)
{
    m_fixture = std::make_unique<testkit::ProgramFixture>();
    if (!m_fixture->showUploader()) {
        return false;
    }
    FileUploaderState& state = m_fixture->state();
    if (name == "cancelKeyButton") {
        m_fixture->application().appManager()->setEditingAPIKey(true);
    } else if (name == "cancelUploadButton") {
        state.enter(UploadState::Requesting);
    } else if (name == "whyButton") {
        state.takeToolReport({{}, "UPLOADFAILED: refused"});
        state.enter(UploadState::Failed, "refused");
    } else if (name == "leftEyePicker") {
        state.selectFormat("Separate");
    } else if (name != "filePicker") {
        state.setSelectedFile(QUrl::fromLocalFile("/a.mov"));
        state.setVideoName("name");
    }
    return m_fixture->driver().ready(name);
}

double ControlsTest::tone(const QQuickItem& item, testkit::SteppedClock& clock) const
{
    for (int count = 0; count < 40; ++count) {
        clock.step(50);
    }
    const QImage picture = m_fixture->window().grabWindow();
    const QRect place = item.mapRectToScene(item.boundingRect()).toRect().intersected(picture.rect());
    double sum = 0;
    for (int y = place.top(); y <= place.bottom(); ++y) {
        for (int x = place.left(); x <= place.right(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            sum += qRed(pixel) + qGreen(pixel) + qBlue(pixel);
        }
    }
    return sum / 3 / place.width() / place.height();
}

void ControlsTest::aDrawingIsPaintedWhileItCanBeSeen()
{
    QQuickWindow window;
    Probe shape(window.contentItem());
    shape.setProperty("fill", QColor(Qt::red));
    window.resize(20, 20);
    window.show();

    const struct
    {
        double opacity;
        bool visible;
        double side;
        int painted; // how often by then
        QColor seen;
    } steps[]{
        {0, true, 10, 0, Qt::white}, {1, false, 10, 0, Qt::white}, {1, true, 0, 0, Qt::white},
        {1, true, 10, 1, Qt::red},   {0.5, true, 10, 1, {}},       {1, true, 10, 1, Qt::red},
        {1, true, 12, 2, Qt::red},   {0, true, 12, 2, Qt::white},  {1, true, 12, 3, Qt::red},
    };

    for (const auto& [opacity, visible, side, painted, seen] : steps) {
        shape.setOpacity(opacity);
        shape.setVisible(visible);
        shape.setSize({side, side});
        const QColor shown = window.grabWindow().pixelColor(5, 5);
        QVERIFY(!seen.isValid() || shown == seen);
        QCOMPARE(shape.painted.size(), painted);
    }
    shape.setProperty("fill", QColor(Qt::blue));
    QCOMPARE(window.grabWindow().pixelColor(5, 5), QColor(Qt::blue));
}

/// What is stretched or shared, and lies anywhere, looks as if it were painted as it is on whole pixels.
void ControlsTest::picturesLookAsPainted()
{
    QQuickWindow window;
    QQuickItem place(window.contentItem());
    window.resize(320, 320);
    window.show();
    QPointF at(20.3, 20.6);
    const auto compare = [&](const std::function<void(QPainter&)>& paint) {
        place.setPosition(at);
        QImage expected(window.size(), QImage::Format_RGB32);
        expected.fill(Qt::white);
        QPainter painter(&expected);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(at.toPoint());
        paint(painter);
        painter.end();
        return difference(window.grabWindow(), expected);
    };

    auto shape = std::make_unique<Probe>(&place);
    shape->setProperty("radius", 10);
    shape->setProperty("lineWidth", 2);
    shape->setProperty("outline", QColor(0, 0, 200));

    const struct
    {
        QSizeF size;
        QColor fill;
        QVariantList dashes;
        QSizeF painted;
    } steps[]{
        {{255, 257}, QColor(200, 0, 0, 128), {}, {255, 257}},
        {{256, 256}, QColor(200, 0, 0, 128), {}, {37, 37}},
        {{280, 240}, QColor(0, 200, 0), {}, {37, 37}},
        {{280, 240}, Qt::transparent, {}, {37, 37}},
        {{30, 30}, Qt::transparent, {}, {30, 30}},
        {{280, 240}, QColor(200, 0, 0), {5, 5}, {280, 240}},
        {{256, 256}, QColor(200, 0, 0), {}, {37, 37}},
    };

    for (const auto& [size, fill, dashes, painted] : steps) {
        shape->setSize(size);
        shape->setProperty("fill", fill);
        shape->setProperty("dashes", dashes);
        QCOMPARE_LE(compare([&](QPainter& painter) { shape->Squircle::paint(painter, shape->size(), 1); }),
                    2);
        QCOMPARE(shape->painted.last(), painted);
        at.rx() += 1.9;
    }
    shape.reset();

    {
        look::BlurredShadow shadow(&place);
        shadow.setProperty("radius", 6);
        shadow.setProperty("blur", 5);
        shadow.setProperty("offset", QPointF(1, 3));
        shadow.setProperty("color", QColor(Qt::black));
        for (const QSize size :
             {QSize(200, 150), QSize(201, 151), QSize(30, 150), QSize(31, 9), QSize(1, 1)}) {
            shadow.setSize(size);
            look::ShadowTile whole = look::shadowTile(size, 6, 5, {1, 3}, Qt::black);
            whole.shape = size;
            const QPoint corner(-whole.reach.left(), -whole.reach.top());
            const QImage picture = look::drawShadow(whole);
            QCOMPARE_LE(compare([&](QPainter& painter) { painter.drawImage(corner, picture); }), 2);
        }
    }

    look::SpokeWheel wheel(&place);
    wheel.setSize({32, 32});
    for (const int step : {0, 3}) {
        wheel.setProperty("step", step);
        QVERIFY(compare([&](QPainter& painter) {
                    painter.setClipRect(0, 0, 32, 32);
                    painter.translate(-32 * step, 0);
                    wheel.paint(painter, {32.0 * look::SpokeWheel::spokes(), 32}, 1);
                }) <= 2);
    }
}

void ControlsTest::equalPicturesAreDrawnOnce()
{
    QQuickWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    int drawn = 0;
    const auto draw = [&drawn] {
        ++drawn;
        return QImage(1, 1, QImage::Format_ARGB32_Premultiplied);
    };
    auto first = look::sharedTexture(window, 1, draw);
    QCOMPARE(look::sharedTexture(window, 1, draw), first);
    QVERIFY(look::sharedTexture(window, 2, draw) != first);
    first.reset(); // with the last who shows it
    QVERIFY(look::sharedTexture(window, 1, draw) != nullptr);
    QCOMPARE(drawn, 3);
}

void ControlsTest::showThatTheyArePressed_data()
{
    QTest::addColumn<bool>("dark");
    QTest::addColumn<QByteArray>("name");
    for (const bool dark : {false, true}) {
        for (const char* name :
             {"workspaceBlock", "detailsButton", "filePicker", "leftEyePicker", "clearButton",
              "formatOption:2D", "formatOption:Stereoscopic Left/Right", "perspectiveOption:180",
              "uploadButton", "cancelUploadButton", "whyButton", "cancelKeyButton"}) {
            QTest::addRow("%s, %s", name, dark ? "dark" : "light") << dark << QByteArray(name);
        }
    }
}

/// A button is large enough to be hit; held, it looks other than one that the pointer only rests on, and let
/// go elsewhere, it has done nothing.
void ControlsTest::showThatTheyArePressed()
{
    QFETCH(bool, dark);
    QFETCH(QByteArray, name);
    QGuiApplication::setPalette(QPalette(dark ? Qt::black : Qt::white));
    QVERIFY(showScreenOf(name));
    QQuickWindow& window = m_fixture->window();
    testkit::SteppedClock clock(*qmlEngine(&window));
    const QQuickItem& control = *m_fixture->item(name);
    QVERIFY(control.width() >= 24 && control.height() >= 24);
    const QPoint pointer = m_fixture->centreOf(name);
    const QPoint elsewhere(450, 4);
    QTest::mouseMove(&window, elsewhere);
    const double atRest = tone(control, clock);
    QTest::mouseMove(&window, pointer);
    const double hovered = tone(control, clock);
    QTest::mousePress(&window, Qt::LeftButton, {}, pointer);
    const double pressed = tone(control, clock);
    QVERIFY2(std::abs(pressed - hovered) > 8, qPrintable(QString::number(pressed - hovered)));
    QTest::mouseMove(&window, elsewhere);
    QTest::mouseRelease(&window, Qt::LeftButton, {}, elsewhere);
    QTest::mouseMove(&window, elsewhere + QPoint(1, 0)); // until then the toolkit tells nobody that it left
    QCOMPARE(tone(control, clock), atRest);
}

QTEST_MAIN(ControlsTest)

#include "tst_controls.moc"
