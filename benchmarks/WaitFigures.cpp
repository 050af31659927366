// How long the program takes to pass on what it is told: a click to the tool, the tool's end to the screen.

#include "benchmarks/Figure.h"
#include "benchmarks/MonotonicClock.h"
#include "benchmarks/Rig.h"
#include "benchmarks/Watch.h"

#include <QFile>
#include <QProcess>
#include <QQuickWindow>

namespace tessary::benchmarks {
namespace {

constexpr int trials = 100;
constexpr double aim = 20; ///< milliseconds

/// What a run of the tool that ends by itself noted: when it began and when it ended, in milliseconds.
std::pair<double, double> lastNotedRun()
{
    QFile note(standInFolder() + QStringLiteral("/ran"));
    require(note.open(QIODevice::ReadOnly), note.errorString());
    const QList<QByteArray> times = note.readAll().trimmed().split('\n').back().split(' ');
    require(times.size() == 2, QStringLiteral("a note of the stand-in"));
    return {times.front().toDouble() / 1e6, times.back().toDouble() / 1e6};
}

/// From asking for the process to its first statement, with nothing around it.
double startBareTool(const QString& file)
{
    QProcess tool;
    const double asked = monotonicMilliseconds();
    tool.start(standInFolder() + QStringLiteral("/azcopy"), {QStringLiteral("copy"), file});
    require(tool.waitForFinished(), QStringLiteral("a bare run of the stand-in"));
    return lastNotedRun().first - asked;
}

Figure latencyFigure(const QString& name, const std::vector<double>& taken, const QString& against)
{
    return {name,
            QStringLiteral("%1 ms").arg(written(quantile(taken, 0.5), 2)),
            against,
            QStringLiteral("90 % %1, most %2")
                .arg(written(quantile(taken, 0.9), 2), written(quantile(taken, 1), 2)),
            QStringLiteral("all < %1 ms").arg(aim),
            quantile(taken, 1) < aim};
}

} // namespace

std::vector<Figure> measureWaits()
{
    const QString file = QStringLiteral("/videos/brief.mp4"); // the stand-in reads no file
    Rig rig(Rig::Tool::StandIn);
    rig.choose(file);
    ClickWatch clicks;
    std::vector<double> toTheTool;
    std::vector<double> toTheScreen;
    std::vector<double> bare;
    const double notYet = 0;
    double shown = notYet;
    const auto watching = QObject::connect(&rig.fixture().window(), &QQuickWindow::frameSwapped, [&] {
        if (shown == notYet && rig.state().uploadState() == UploadState::Failed) {
            shown = monotonicMilliseconds();
        }
    });
    for (int trial = 0; trial < trials; ++trial) {
        rig.click("uploadButton"); // returns when the button has been let go, before any task runs
        shown = notYet;
        while (shown == notYet) {
            runFor(std::chrono::milliseconds(5));
        }
        const auto [began, ended] = lastNotedRun();
        toTheTool.push_back(began - clicks.released());
        toTheScreen.push_back(shown - ended);
        rig.awaitIdle();
        bare.push_back(startBareTool(file));
    }
    QObject::disconnect(watching);
    return {latencyFigure(QStringLiteral("click to the tool's first statement, 100 trials"), toTheTool,
                          QStringLiteral("bare start: %1 ms").arg(written(quantile(bare, 0.5), 2))),
            latencyFigure(QStringLiteral("the tool's end to the status line on the screen, 100 trials"),
                          toTheScreen, QStringLiteral("20 ms"))};
}

} // namespace tessary::benchmarks
