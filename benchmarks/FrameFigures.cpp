// How long frames take while what is on the screen moves: the log, the window's edge, the details.

#include "benchmarks/Figure.h"
#include "benchmarks/Rig.h"
#include "benchmarks/Watch.h"
#include "service/Workspace.h"

#include <QQuickItem>
#include <QWheelEvent>

#include <array>
#include <functional>
#include <limits>

namespace tessary::benchmarks {
namespace {

struct Movement
{
    const char* name;
    std::function<void()> act;
};

void scroll(QQuickWindow& window, const QPointF& place, int notches)
{
    constexpr int notch = 120;
    for (int count = 0; count < std::abs(notches); ++count) {
        QWheelEvent wheel(place, window.mapToGlobal(place), {}, {0, notches > 0 ? notch : -notch},
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&window, &wheel);
        runFor(std::chrono::milliseconds(20));
    }
}

void resizeTo(QQuickWindow& window, QSize size)
{
    for (int step = 20; step >= 0; --step) {
        window.resize(size - QSize(step, step) * 4);
        runFor(std::chrono::milliseconds(50));
    }
}

/// Every value of it is as long as they come.
Workspace longWorkspace()
{
    constexpr qint64 most = std::numeric_limits<qint64>::max();
    const QString text(2000, u'W');
    return {most, text, text, most, true, true, most,
            true, most, most, most, text, true, QStringList(1000, text),
            text, text, text};
}

/// The longest frame while something moves, in each of a few rounds: what the machine itself holds up for
/// once is in one of them.
std::vector<double> longestFrames(QQuickWindow& window, const std::function<void()>& act)
{
    constexpr int rounds = 3;
    std::vector<double> longest;
    for (int round = 0; round < rounds; ++round) {
        const FrameWatch watch(window);
        act();
        require(!watch.frames().empty(), QStringLiteral("a frame"));
        longest.push_back(quantile(watch.frames(), 1));
    }
    return longest;
}

Figure frameFigure(const QString& name, const std::vector<double>& longest, double aim)
{
    const auto text = [&longest](double fraction) { return written(quantile(longest, fraction), 1); };
    return {name,
            QStringLiteral("%1 ms").arg(text(0.5)),
            QStringLiteral("%1 rounds").arg(longest.size()),
            QStringLiteral("the longest; %1 to %2").arg(text(0), text(1)),
            QStringLiteral("all ≤ %1 ms").arg(aim),
            quantile(longest, 0.5) <= aim};
}

} // namespace

std::vector<Figure> measureFrames()
{
    Rig rig(Rig::Tool::StandIn);
    QQuickWindow& window = rig.fixture().window();
    rig.choose(QStringLiteral("/videos/talkative.mp4")); // the stand-in reads no file
    rig.click("uploadButton");
    runFor(std::chrono::seconds(12)); // the log fills up
    rig.click("cancelUploadButton");
    rig.awaitIdle();
    std::vector<Figure> figures;
    for (const auto& [size, aim] : {std::pair{QSize(1000, 800), 16.0}, std::pair{QSize(3840, 2160), 33.0}}) {
        window.resize(size);
        runFor(std::chrono::seconds(1));
        const QQuickItem* card = rig.fixture().item("logCard");
        require(card != nullptr, QStringLiteral("the log"));
        const QPointF place = card->mapToScene({card->width() / 2, card->height() / 2});
        const std::array movements{Movement{"a full log scrolled",
                                            [&] {
                                                scroll(window, place, 60);
                                                scroll(window, place, -60);
                                            }},
                                   Movement{"a resize", [&, size = size] { resizeTo(window, size); }},
                                   Movement{"a name of 2000 characters",
                                            [&] {
                                                rig.state().setVideoName({});
                                                runFor(std::chrono::milliseconds(100));
                                                rig.state().setVideoName(QString(2000, u'W'));
                                                runFor(std::chrono::milliseconds(200));
                                            }},
                                   Movement{"a workspace of 17 long fields",
                                            [&] {
                                                rig.fixture().session().setWorkspaceData({});
                                                runFor(std::chrono::milliseconds(100));
                                                rig.fixture().session().setWorkspaceData(longWorkspace());
                                                runFor(std::chrono::milliseconds(200));
                                            }},
                                   Movement{"details toggled ten times", [&] {
                                                for (int count = 0; count < 10; ++count) {
                                                    rig.state().setShowDetails(!rig.state().showDetails());
                                                    runFor(std::chrono::milliseconds(500));
                                                }
                                            }}};
        for (const Movement& movement : movements) {
            figures.push_back(frameFigure(QStringLiteral("frames of %1, %2 x %3")
                                              .arg(QLatin1StringView(movement.name))
                                              .arg(size.width())
                                              .arg(size.height()),
                                          longestFrames(window, movement.act), aim));
        }
    }
    return figures;
}

} // namespace tessary::benchmarks
