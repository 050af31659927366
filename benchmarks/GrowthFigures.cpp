// What grows with the number of windows, and what is given back.

#include "benchmarks/Figure.h"
#include "benchmarks/Rig.h"
#include "testkit/ProcessUsage.h"
#include "ui/uploader/UploaderStateHolder.h"

#include <QQmlEngine>
#include <QQuickWindow>

#include <malloc.h>

namespace tessary::benchmarks {
namespace {

constexpr double mebibyte = 1024.0 * 1024.0;

/// In MiB, when what is free has been given back.
double residentAtRest(Rig& rig)
{
    runFor(std::chrono::seconds(1)); // what is to be deleted later is deleted
    qmlEngine(&rig.fixture().window())->collectGarbage();
    malloc_trim(0);
    return static_cast<double>(testkit::takeProcessUsage().residentBytes) / mebibyte;
}

void openWindow(Rig& rig)
{
    require(rig.fixture().program().openWindow(), QStringLiteral("a window"));
    runFor(std::chrono::milliseconds(100));
}

/// From the event loop, as a person closes it: what is to be deleted later is deleted then.
void closeNewestWindow(Rig& rig)
{
    QMetaObject::invokeMethod(rig.fixture().program().windows().back(), &QWindow::close,
                              Qt::QueuedConnection);
    runFor(std::chrono::milliseconds(100));
}

void startUploadIn(const QQuickWindow& window)
{
    const auto* holder = window.findChild<UploaderStateHolder*>();
    require(holder != nullptr, QStringLiteral("the screen of a window"));
    FileUploaderState& state = *holder->state();
    state.setVideoName(QStringLiteral("At once"));
    state.setSelectedFile(
        QUrl::fromLocalFile(QStringLiteral("/videos/patient.mp4"))); // the stand-in reads no file
    state.startUpload();
}

Figure windowsFigure()
{
    constexpr int windows = 100;
    constexpr double bound = 4;
    Rig rig(Rig::Tool::StandIn);
    openWindow(rig); // what the first one loads is kept
    closeNewestWindow(rig);
    const double before = residentAtRest(rig);
    for (int count = 0; count < windows; ++count) {
        openWindow(rig);
        closeNewestWindow(rig);
    }
    const double after = residentAtRest(rig);
    return {QStringLiteral("memory after 100 windows opened and closed"),
            written(after, 1) + QStringLiteral(" MiB"),
            QStringLiteral("before: %1 MiB").arg(written(before, 1)),
            QStringLiteral("%1 MiB more").arg(written(after - before, 1)),
            QStringLiteral("≤ 4 MiB more"),
            after - before <= bound};
}

Figure shareFigure(const QString& name, double bound)
{
    constexpr int rounds = 3;
    constexpr std::chrono::seconds watched{3};
    runFor(std::chrono::seconds(2));
    const double share = quantile(cpuSharesFor(rounds, watched), 0.5);
    const auto resident = static_cast<double>(testkit::takeProcessUsage().residentBytes);
    return {name,
            written(share * 100, 2) + QStringLiteral(" %"),
            QStringLiteral("one core"),
            QStringLiteral("%1 MiB in use").arg(written(resident / mebibyte, 1)),
            QStringLiteral("< %1 %").arg(bound * 100),
            share < bound};
}

/// With one window more each, and then with none on the screen.
std::vector<Figure> uploadsAtOnceFigures()
{
    constexpr int most = 4;
    constexpr double boundPerWindow = 0.012;
    constexpr double boundUnseen = 0.003;
    Rig rig(Rig::Tool::StandIn);
    std::vector<Figure> figures;
    for (int count = 1; count <= most; ++count) {
        if (count > 1) {
            openWindow(rig);
        }
        startUploadIn(*rig.fixture().program().windows().back());
        figures.push_back(shareFigure(QStringLiteral("own CPU with uploads in %1 windows at once").arg(count),
                                      boundPerWindow * count));
    }
    const std::vector<QQuickWindow*> windows = rig.fixture().program().windows();
    for (const QQuickWindow* window : windows) {
        takeFromTheScreen(*window);
    }
    figures.push_back(
        shareFigure(QStringLiteral("the same with none of them on the screen"), boundUnseen * most));
    for (const QQuickWindow* window : windows) {
        window->findChild<UploaderStateHolder*>()->state()->cancelUpload();
    }
    rig.awaitIdle();
    return figures;
}

} // namespace

std::vector<Figure> measureGrowth()
{
    std::vector<Figure> figures{windowsFigure()};
    const std::vector<Figure> atOnce = uploadsAtOnceFigures();
    figures.insert(figures.end(), atOnce.begin(), atOnce.end());
    return figures;
}

} // namespace tessary::benchmarks
