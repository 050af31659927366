#include "testkit/ProgramFixture.h"
#include "testkit/SteppedClock.h"
#include "ui/look/Spring.h"

#include <QEasingCurve>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <cmath>
#include <functional>
#include <vector>

using namespace tessary;

namespace {

using Curve = std::function<double(double seconds)>; // from 0 to 1
using Act = std::function<void(FileUploaderState&)>;

Curve spring(double response)
{
    return [response](double seconds) {
        return 1 - look::Spring(response, 0.825).after(seconds, {1, 0}).distance;
    };
}

Curve easeInOut(double duration)
{
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment({0.42, 0}, {0.58, 1}, {1, 1});
    return [curve, duration](double seconds) {
        return curve.valueForProgress(std::min(seconds / duration, 1.0));
    };
}

/// There and back again.
Curve pulse(double duration)
{
    return [there = easeInOut(duration), duration](double seconds) {
        const double place = std::fmod(seconds, 2 * duration);
        return there(std::min(place, 2 * duration - place));
    };
}

} // namespace

/// How the screen's parts move, sampled on a clock that stands still between the samples.
class MotionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void followsItsCurve_data();
    void followsItsCurve();
};

void MotionTest::followsItsCurve_data()
{
    QTest::addColumn<Act>("before");
    QTest::addColumn<Act>("act");
    QTest::addColumn<QString>("item");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<Curve>("curve");
    QTest::addColumn<int>("step"); // in milliseconds
    const Act nothing = [](FileUploaderState& /*state*/) {};
    const Act separate = [](FileUploaderState& state) { state.selectFormat("Separate"); };
    const Act single = [](FileUploaderState& state) { state.selectFormat("2D"); };
    const Act complete = [](FileUploaderState& state) { state.setShowSuccessAnimation(true); };
    const Act end = [](FileUploaderState& state) { state.setShowSuccessAnimation(false); };
    const Act hover = [](FileUploaderState& state) { state.setIsHeaderHovered(true); };
    const Act upload = [](FileUploaderState& state) { state.enter(UploadState::Requesting); };
    QTest::newRow("two pickers") << nothing << separate << "fileArea" << QByteArray("height") << 0.0 << 0.0
                                 << spring(0.3) << 20;
    QTest::newRow("one picker") << separate << single << "fileArea" << QByteArray("height") << 0.0 << 0.0
                                << spring(0.3) << 20;
    QTest::newRow("overlay comes") << nothing << complete << "successCard" << QByteArray("scale") << 0.8
                                   << 1.0 << spring(0.6) << 20;
    QTest::newRow("overlay goes") << complete << end << "successOverlay" << QByteArray("amount") << 1.0 << 0.0
                                  << easeInOut(0.35) << 25;
    QTest::newRow("overlay's badge") << complete << end << "successBadge" << QByteArray("scale") << 1.0 << 0.5
                                     << easeInOut(0.35) << 25;
    QTest::newRow("dot") << nothing << upload << "stateDot" << QByteArray("opacity") << 0.8 << 1.0
                         << pulse(0.6) << 150;
    QTest::newRow("block under the pointer")
        << nothing << hover << "workspaceBlock" << QByteArray("scale") << 1.0 << 1.02 << easeInOut(0.2) << 20;
}

void MotionTest::followsItsCurve()
{
    QFETCH(Act, before);
    QFETCH(Act, act);
    QFETCH(QString, item);
    QFETCH(QByteArray, property);
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(Curve, curve);
    QFETCH(int, step);
    const bool measured = from == to; // how high things are depends on the font
    testkit::ProgramFixture fixture;
    QVERIFY(fixture.showUploader());
    testkit::SteppedClock clock(*qmlEngine(&fixture.window()));
    before(fixture.state());
    for (int count = 0; count < 200; ++count) {
        clock.step(10);
    }
    act(fixture.state());
    if (item == "successCard" && to > from) {
        clock.step(1); // it is there for a moment before it comes in
    }
    std::vector<double> samples;
    for (int count = 0; count <= 30; ++count, clock.step(step)) {
        const QQuickItem* moved = fixture.driver().find(item);
        samples.push_back(moved == nullptr ? to : moved->property(property).toDouble()); // gone at its end
    }
    if (measured) {
        from = samples.front();
        to = samples.back();
        QVERIFY(std::abs(to - from) > 50);
    }
    for (std::size_t count = 0; count < samples.size(); ++count) {
        const int time = static_cast<int>(count) * step;
        const double expected = from + (to - from) * curve(time / 1000.0);
        QVERIFY2(
            std::abs(samples[count] - expected) <= std::abs(to - from) / 100,
            qPrintable(
                QStringLiteral("%1 instead of %2 after %3 ms").arg(samples[count]).arg(expected).arg(time)));
    }
}

QTEST_MAIN(MotionTest)

#include "tst_motion.moc"
