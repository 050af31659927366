// What the program uses while the real tool uploads: over time, and by how much there is to upload.

#include "benchmarks/Figure.h"
#include "benchmarks/Rig.h"
#include "testkit/ProcessUsage.h"

#include <QQuickWindow>

#include <utility>

namespace tessary::benchmarks {
namespace {

constexpr double mebibyte = 1024.0 * 1024.0;
constexpr qint64 gibibyte = 1024LL * 1024 * 1024;

Figure partFigure(Rig& rig, const char* name, double bound)
{
    constexpr int rounds = 5;
    constexpr std::chrono::seconds watched{4};
    runFor(std::chrono::seconds(2)); // what the change itself costs
    const std::vector<double> shares = cpuSharesFor(rounds, watched);
    const double share = quantile(shares, 0.5);
    require(rig.state().uploadState() == UploadState::Uploading,
            QStringLiteral("an upload that takes as long"));
    return {QStringLiteral("own CPU while uploading, ") + QLatin1StringView(name),
            written(share * 100, 2) + QStringLiteral(" %"),
            QStringLiteral("one core"),
            QStringLiteral("%1 rounds of %2 s; %3 to %4")
                .arg(rounds)
                .arg(watched.count())
                .arg(written(quantile(shares, 0) * 100, 2), written(quantile(shares, 1) * 100, 2)),
            QStringLiteral("< %1 %").arg(bound * 100),
            share < bound};
}

/// One long upload over a link, looked at in three ways; it is not waited for.
std::vector<Figure> shareFigures()
{
    Rig rig(Rig::Tool::RealOverLink);
    rig.choose(rig.makeFile(QStringLiteral("long.mp4"), 100 * gibibyte));
    rig.click("uploadButton");
    rig.await(UploadState::Uploading);
    std::vector<Figure> figures{partFigure(rig, "details shown", 0.012)};
    rig.state().setShowDetails(false);
    figures.push_back(partFigure(rig, "details hidden", 0.01));
    takeFromTheScreen(rig.fixture().window());
    figures.push_back(partFigure(rig, "not on the screen", 0.003));
    rig.state().cancelUpload();
    rig.awaitIdle();
    return figures;
}

/// Processor time and memory of an upload from the click until it is in the library.
std::vector<Figure> sizeFigures()
{
    std::vector<Figure> figures;
    for (const auto& [size, name] : {std::pair{gibibyte / 10, "0.1 GiB"}, std::pair{gibibyte, "1 GiB"},
                                     std::pair{4 * gibibyte, "4 GiB"}}) {
        for (const bool pair : {false, true}) {
            Rig rig(Rig::Tool::RealIntoSink);
            const QUrl left = QUrl::fromLocalFile(rig.makeFile(QStringLiteral("left.mp4"), size));
            rig.choose(left.toLocalFile());
            if (pair) {
                rig.state().selectFormat(QStringLiteral("Separate"));
                rig.state().setSelectedFileLeft(left);
                rig.state().setSelectedFileRight(
                    QUrl::fromLocalFile(rig.makeFile(QStringLiteral("right.mp4"), size)));
                runFor(std::chrono::seconds(1)); // the form moves
            }
            const testkit::ProcessUsage before = testkit::takeProcessUsage();
            rig.click("uploadButton");
            rig.await(UploadState::Completed);
            rig.awaitIdle();
            const testkit::ProcessUsage after = testkit::takeProcessUsage();
            const double used =
                std::chrono::duration<double, std::milli>(after.ownCpu - before.ownCpu).count();
            const auto more = static_cast<double>(after.residentBytes - before.residentBytes) / mebibyte;
            figures.push_back({QStringLiteral("own CPU of an upload of %1%2")
                                   .arg(pair ? QStringLiteral("twice ") : QString(), QLatin1StringView(name)),
                               written(used, 0) + QStringLiteral(" ms"), QString(),
                               QStringLiteral("%1 MiB more in use").arg(written(more, 1)),
                               QStringLiteral("stated"), true});
        }
    }
    return figures;
}

} // namespace

std::vector<Figure> measureTransfers()
{
    std::vector<Figure> figures = shareFigures();
    const std::vector<Figure> bySize = sizeFigures();
    figures.insert(figures.end(), bySize.begin(), bySize.end());
    return figures;
}

} // namespace tessary::benchmarks
