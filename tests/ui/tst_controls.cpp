#include "testkit/ProgramFixture.h"
#include "testkit/SteppedClock.h"
#include "ui/look/SharedTexture.h"
#include "ui/look/Squircle.h"

#include <QGuiApplication>
#include <QImage>
#include <QPalette>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

using namespace tessary;

/// What can be pressed is large enough for it, and shows it.
class ControlsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aDrawingIsShownFromWhenItCanBeSeen();
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

void ControlsTest::aDrawingIsShownFromWhenItCanBeSeen()
{
    QQuickWindow window;
    look::Squircle shape(window.contentItem());
    shape.setSize({10, 10});
    shape.setProperty("fill", QColor(Qt::red));
    shape.setProperty("radius", 4);
    window.resize(10, 10);
    window.show();
    for (const bool seen : {false, true}) {
        shape.setOpacity(seen ? 1 : 0);
        QCOMPARE(window.grabWindow().pixelColor(5, 5), QColor(seen ? Qt::red : Qt::white));
    }
    const QImage picture = window.grabWindow();
    const auto whiteAt = [&picture](int x) { return picture.pixelColor(x, 0).green(); };
    const int curve = whiteAt(0) < 255 ? whiteAt(0) : whiteAt(1) < 255 ? whiteAt(1) : whiteAt(2);
    QVERIFY2(curve > 0 && curve < 255, qPrintable(QString::number(curve))); // it is smooth
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
