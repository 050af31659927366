#include "ui/look/ShadowTile.h"
#include "ui/look/SpokeWheel.h"
#include "ui/look/Squircle.h"
#include "ui/look/SquirclePath.h"
#include "ui/look/Symbol.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QTest>

#include <cmath>
#include <numbers>

using namespace tessary::look;
using namespace Qt::StringLiterals;

namespace {

QImage painted(const VisiblePainter& item, QSizeF size, qreal scale, int margin = 0)
{
    QImage image((size * scale).toSize() + QSize(2 * margin, 2 * margin),
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(margin, margin);
    painter.scale(scale, scale);
    item.paint(painter, size, scale);
    return image;
}

/// The share of a normal distribution below that many standard deviations.
double normal(double deviations)
{
    return (1 + std::erf(deviations / std::numbers::sqrt2)) / 2;
}

} // namespace

/// Small drawn pieces, against what they must be by calculation.
class DrawingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cornerEasesIntoItsArc_data();
    void cornerEasesIntoItsArc();
    void outlineCoversWholePixels_data();
    void outlineCoversWholePixels();
    void dashesHaveTheirLengths();
    void shadowFallsOffNormally_data();
    void shadowFallsOffNormally();
    void symbolIsInkInOneColour_data();
    void symbolIsInkInOneColour();
    void wheelFadesBehindItsBrightestSpoke();
};

void DrawingTest::cornerEasesIntoItsArc_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<double>("radius");
    QTest::addColumn<double>("reach"); // of the corner along its edges
    QTest::newRow("card") << QSizeF(200, 100) << 16.0 << 25.6;
    QTest::newRow("tight") << QSizeF(200, 40) << 16.0 << 20.0;
    QTest::newRow("round") << QSizeF(30, 30) << 15.0 << 15.0;
    QTest::newRow("too large") << QSizeF(60, 20) << 50.0 << 10.0;
}

void DrawingTest::cornerEasesIntoItsArc()
{
    QFETCH(QSizeF, size);
    QFETCH(double, radius);
    QFETCH(double, reach);
    const QPainterPath path = squirclePath(QRectF({5, 7}, size), radius);
    const double drawn = std::min({radius, size.width() / 2, size.height() / 2});
    QCOMPARE(path.boundingRect(), QRectF({5, 7}, size));
    QVERIFY(std::abs(path.elementAt(0).x - 5 - reach) < 1e-9);
    // On the diagonal the edge is that of a circle of the radius, whatever the easing.
    const double depth = drawn * (std::numbers::sqrt2 - 1);
    const QPointF inward = QPointF(1, 1) / std::numbers::sqrt2;
    QVERIFY(path.contains(QPointF(5, 7) + (depth + 0.05) * inward));
    QVERIFY(!path.contains(QPointF(5, 7) + (depth - 0.05) * inward));
    // All four corners are alike.
    for (const double along : {0.02, 0.2, 0.5, 0.8, 0.98}) {
        for (const double across : {0.05, 0.1, 0.3}) {
            const QPointF offset(along * reach, across * reach);
            const QRectF box({5, 7}, size);
            const bool inside = path.contains(box.topLeft() + offset);
            QCOMPARE(path.contains(box.topRight() + QPointF(-offset.x(), offset.y())), inside);
            QCOMPARE(path.contains(box.bottomRight() - offset), inside);
            QCOMPARE(path.contains(box.bottomLeft() + QPointF(offset.x(), -offset.y())), inside);
            QCOMPARE(path.contains(box.topLeft() + offset.transposed()), inside);
        }
    }
    // No jump of direction between one curve and the next, where there is room to ease.
    for (int part = 1; part < 3 && reach > drawn; ++part) {
        const auto at = [&path](int index) { return QPointF(path.elementAt(index)); };
        const int joint = 1 + 3 * part; // the end of a curve of the first corner
        const QPointF before = at(joint) - at(joint - 1);
        const QPointF after = at(joint + 1) - at(joint);
        const double turn = before.x() * after.y() - before.y() * after.x();
        QVERIFY(std::abs(turn) <=
                1e-6 * (1 + std::hypot(before.x(), before.y()) * std::hypot(after.x(), after.y())));
    }
}

void DrawingTest::outlineCoversWholePixels_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("width");
    QTest::addColumn<int>("outside"); // device pixels of the line beyond the edge
    QTest::addColumn<int>("inside");
    QTest::newRow("1 at 100 %") << 1.0 << 1.0 << 0 << 1;
    QTest::newRow("1 at 125 %") << 1.25 << 1.0 << 0 << 1;
    QTest::newRow("1 at 150 %") << 1.5 << 1.0 << 1 << 1;
    QTest::newRow("1 at 200 %") << 2.0 << 1.0 << 1 << 1;
    QTest::newRow("2 at 100 %") << 1.0 << 2.0 << 1 << 1;
    QTest::newRow("2 at 125 %") << 1.25 << 2.0 << 1 << 2;
    QTest::newRow("hairline") << 1.0 << 0.2 << 0 << 1;
    QTest::newRow("none") << 1.0 << 0.0 << 0 << 0;
}

void DrawingTest::outlineCoversWholePixels()
{
    QFETCH(double, scale);
    QFETCH(double, width);
    QFETCH(int, outside);
    QFETCH(int, inside);
    Squircle squircle;
    squircle.setProperty("radius", 4);
    squircle.setProperty("fill", QColor(Qt::white));
    squircle.setProperty("outline", QColor(Qt::blue));
    squircle.setProperty("lineWidth", width);
    constexpr int margin = 6;
    const QImage image = painted(squircle, {40, 40}, scale, margin);
    const int middle = image.height() / 2;
    for (int x = 0; x < 2 * margin; ++x) {
        const QColor expected = x < margin - outside  ? QColor(Qt::transparent)
                                : x < margin + inside ? QColor(Qt::blue)
                                                      : QColor(Qt::white);
        QCOMPARE(image.pixelColor(x, middle), expected);
        QCOMPARE(image.pixelColor(image.width() - 1 - x, middle), expected);
        QCOMPARE(image.pixelColor(middle, x), expected);
    }
}

void DrawingTest::dashesHaveTheirLengths()
{
    Squircle squircle;
    squircle.setProperty("outline", QColor(Qt::blue));
    squircle.setProperty("lineWidth", 2);
    squircle.setProperty("dashes", QVariantList{6, 3});
    const QImage image = painted(squircle, {90, 20}, 1, 2);
    for (int x = 2; x < 90; ++x) { // without a radius the line begins in the corner
        QCOMPARE(image.pixelColor(x, 2).alpha(), (x - 2) % 9 < 6 ? 255 : 0);
    }
}

void DrawingTest::shadowFallsOffNormally_data()
{
    QTest::addColumn<double>("blur");
    QTest::addColumn<double>("offset");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QSize>(
        "shape"); // as small as it may be, with a corner that reaches 19.2 along its edges
    QTest::newRow("card") << 10.0 << 5.0 << QColor(0, 0, 0, 26) << QSize(61, 71);
    QTest::newRow("strong") << 20.0 << 10.0 << QColor(0, 0, 0) << QSize(81, 101);
    QTest::newRow("coloured") << 8.0 << 12.0 << QColor(0, 122, 255, 200) << QSize(57, 81);
    QTest::newRow("slight, no offset") << 3.0 << 0.0 << QColor(0, 0, 0, 255) << QSize(47, 47);
}

/// Below the middle of a long edge the shadow is its colour times the normal distribution of the way out,
/// with half the blur for a standard deviation; beyond the blur there is nothing.
void DrawingTest::shadowFallsOffNormally()
{
    QFETCH(double, blur);
    QFETCH(double, offset);
    QFETCH(QColor, color);
    const ShadowTile tile = shadowTile({400, 300}, 12, blur, {0, offset}, color);
    QTEST(tile.shape, "shape");
    QCOMPARE(tile.reach.bottom(), int(std::ceil(blur + offset)));
    QCOMPARE(tile.reach.top(), int(std::ceil(std::max(blur - offset, 0.0))));
    const QImage image = drawShadow(tile);
    QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
    const int x = tile.reach.left() + tile.shape.width() / 2;
    const int edge = tile.reach.top() + tile.shape.height();
    for (int y = edge; y < image.height(); ++y) {
        const double out = y + 0.5 - edge - offset;
        const double expected = color.alpha() * normal(-out / (blur / 2));
        const double drawn = image.pixelColor(x, y).alpha();
        // The distribution is cut off at two deviations and put into the steps of one byte.
        QVERIFY2(std::abs(drawn - expected) <= 0.03 * color.alpha() + 1,
                 qPrintable(QStringLiteral("%1: %2 instead of %3").arg(out).arg(drawn).arg(expected)));
    }
    for (int y = tile.reach.top() + 1; y < edge - 1; ++y) {
        QCOMPARE(image.pixelColor(x, y).alpha(), 0); // nothing under the shape itself
    }
    const QColor hue = image.pixelColor(x, edge + 1);
    QVERIFY(std::abs(hue.blue() - color.blue()) <= 255 / std::max(hue.alpha(), 1) + 1);
}

void DrawingTest::symbolIsInkInOneColour_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QPointF>("ink"); // shares of the side
    QTest::addColumn<QPointF>("cutOut");
    QTest::newRow("disc with a cross") << u"xmark.circle.fill"_s << QPointF(0.5, 0.2) << QPointF(0.5, 0.5);
    QTest::newRow("with an arrow") << u"arrow.up.circle.fill"_s << QPointF(0.2, 0.5) << QPointF(0.5, 0.5);
    QTest::newRow("triangle") << u"exclamationmark.triangle.fill"_s << QPointF(0.3, 0.75)
                              << QPointF(0.5, 0.5);
}

void DrawingTest::symbolIsInkInOneColour()
{
    QFETCH(QString, name);
    QFETCH(QPointF, ink);
    QFETCH(QPointF, cutOut);
    Symbol symbol;
    symbol.setProperty("name", name);
    symbol.setFontSize(20);
    QCOMPARE(symbol.fontSize(), 20.0);
    QCOMPARE(symbol.implicitWidth(), 24.0);
    const QColor tint(200, 40, 10, 128);
    symbol.setProperty("color", tint);
    const auto pixel = [](const QImage& image, QPointF at) {
        return image.pixelColor((QPointF(at.x() * image.width(), at.y() * image.height())).toPoint());
    };
    const QImage image = painted(symbol, {24, 24}, 2);
    QCOMPARE(image.size(), QSize(48, 48));
    const QColor drawn = pixel(image, ink);
    QCOMPARE(drawn.alpha(), 128);
    QVERIFY(std::abs(drawn.red() - 200) <= 2 && std::abs(drawn.green() - 40) <= 2);
    QCOMPARE(pixel(image, cutOut).alpha(), 0);
    QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
    symbol.setProperty("backing", QColor(Qt::blue));
    QCOMPARE(pixel(painted(symbol, {24, 24}, 2), cutOut), QColor(Qt::blue));
    symbol.setProperty("backing", QColor(Qt::transparent));
    // Turned clockwise by a quarter, a point on top is found at the right.
    symbol.setProperty("turn", 90);
    const QImage turned = painted(symbol, {24, 24}, 2);
    for (const QPoint at : {QPoint(24, 8), QPoint(30, 12), QPoint(10, 24), QPoint(16, 31)}) {
        QVERIFY(std::abs(qAlpha(turned.pixel(47 - at.y(), at.x())) - qAlpha(image.pixel(at))) <= 24);
    }
    symbol.setProperty("turn", 0);
    QCOMPARE(painted(symbol, {24, 24}, 2), image); // upright from the beginning
}

void DrawingTest::wheelFadesBehindItsBrightestSpoke()
{
    constexpr int brightest = 3; // clockwise from the top one
    SpokeWheel wheel;
    wheel.setProperty("tint", QColor(Qt::blue));
    const QImage image =
        painted(wheel, {32.0 * SpokeWheel::spokes(), 32}, 2).copy(brightest * 64, 0, 64, 64); // of that step
    QCOMPARE(image.pixelColor(28, 0).alpha(), 0); // a spoke's ends are round
    for (int behind = 0; behind < SpokeWheel::spokes(); ++behind) {
        const double angle = 45.0 * (behind - brightest); // to the left, in degrees
        const auto alphaAt = [&](double out, double aside) {
            const QPointF outwards = QLineF::fromPolar(out, 90 + angle).p2();
            const QPointF across = QLineF::fromPolar(aside, angle).p2();
            return image.pixelColor((QPointF(32, 32) + outwards + across).toPoint()).alpha();
        };
        const double expected = 255 * (1 - 0.75 * behind / 7);
        for (const double out : {17.0, 23.0, 29.0}) {
            QVERIFY(std::abs(alphaAt(out, 0) - expected) <= 2);
        }
        QCOMPARE(alphaAt(11, 0), 0);
        for (const double side : {-1.0, 1.0}) {
            QVERIFY(std::abs(alphaAt(23, 2 * side) - expected) <= 2);
            QCOMPARE(alphaAt(23, 6 * side), 0);
        }
    }
}

QTEST_GUILESS_MAIN(DrawingTest)

#include "tst_drawing.moc"
