#include "benchmarks/Figure.h"
#include "benchmarks/Rig.h"
#include "benchmarks/Watch.h"
#include "service/Diagnostics.h"

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QQuickWindow>
#include <QTimer>

namespace tessary::benchmarks {
namespace {

const QString videoFolder = QStringLiteral("/videos/"); // the stand-in reads no file

double lastNotedStop()
{
    QFile note(standInFolder() + QStringLiteral("/stopped"));
    require(note.open(QIODevice::ReadOnly), note.errorString());
    return note.readAll().trimmed().split('\n').back().toDouble() / 1e6;
}

Figure idleFigure(QLatin1StringView name, double share)
{
    constexpr double aim = 0.0005;
    return {QStringLiteral("CPU when idle, ") + name,
            written(share * 100, 3) + QStringLiteral(" %"),
            QStringLiteral("one core"),
            QString(),
            QStringLiteral("< 0.05 %"),
            share < aim};
}

} // namespace

std::vector<Figure> measureIdleness()
{
    constexpr std::chrono::seconds watched{12};
    Rig rig(Rig::Tool::StandIn);
    std::vector<Figure> figures;
    const auto take = [&figures, watched](const char* name) {
        figures.push_back(idleFigure(QLatin1StringView(name), cpuShareFor(watched)));
    };
    runFor(std::chrono::seconds(3)); // the screen comes in
    take("signed in");
    rig.choose(videoFolder + QStringLiteral("good.mp4"));
    runFor(std::chrono::seconds(12)); // the cursor comes to rest
    take("a name typed and left");
    QWindow other;
    other.show();
    other.requestActivate();
    runFor(std::chrono::seconds(1));
    require(other.isActive(), QStringLiteral("the focus in another window"));
    take("the focus elsewhere");
    require(rig.fixture().program().openWindow(), QStringLiteral("a window"));
    runFor(std::chrono::seconds(12));
    take("two windows");
    return figures;
}

std::vector<Figure> measureCancelling()
{
    constexpr int trials = 100;
    constexpr double aim = 200;
    QFile::remove(standInFolder() + QStringLiteral("/stopped"));
    Rig rig(Rig::Tool::StandIn);
    rig.choose(videoFolder + QStringLiteral("patient.mp4"));
    ClickWatch watch;
    std::vector<double> latencies;
    for (int trial = 0; trial < trials; ++trial) {
        rig.click("uploadButton");
        rig.awaitLog(QStringLiteral("ready"));
        rig.click("cancelUploadButton");
        rig.awaitIdle();
        latencies.push_back(lastNotedStop() - watch.released());
    }
    const auto text = [&latencies](double fraction) { return written(quantile(latencies, fraction), 2); };
    return {
        {QStringLiteral("cancel click to SIGTERM, 100 trials"), QStringLiteral("%1 ms").arg(text(0.5)),
         QStringLiteral("200 ms"),
         QStringLiteral("least %1, 90 % %2, 99 % %3, most %4").arg(text(0), text(0.9), text(0.99), text(1)),
         QStringLiteral("all < 200 ms"), quantile(latencies, 1) < aim}};
}

std::vector<Figure> measureEventLoop()
{
    constexpr int runs = 5;
    constexpr std::chrono::seconds watched{10};
    constexpr double aim = 16;
    Rig rig(Rig::Tool::StandIn);
    rig.choose(videoFolder + QStringLiteral("talkative.mp4"));
    rig.click("uploadButton");
    runFor(std::chrono::seconds(3)); // the log fills up
    int taken = 0;
    const auto counting = QObject::connect(&rig.state(), &FileUploaderState::progressChanged, &rig.state(),
                                           [&taken] { ++taken; });
    std::vector<double> longest;
    for (int run = 0; run < runs; ++run) {
        double gap = 0;
        QElapsedTimer clock;
        QTimer tick;
        tick.setTimerType(Qt::PreciseTimer);
        QObject::connect(&tick, &QTimer::timeout, [&] {
            gap = std::max(gap, static_cast<double>(clock.nsecsElapsed()) / 1e6);
            clock.start();
        });
        clock.start();
        tick.start(std::chrono::milliseconds(1));
        runFor(watched);
        longest.push_back(gap);
    }
    QObject::disconnect(counting);
    rig.click("cancelUploadButton");
    rig.awaitIdle();
    const double reads = taken / (runs * std::chrono::duration<double>(watched).count());
    const double gap = quantile(longest, 0.5);
    return {{QStringLiteral("longest event-loop gap in 10 s, 1000 chunks a second"),
             written(gap, 1) + QStringLiteral(" ms"), QStringLiteral("16 ms"),
             QStringLiteral("%1 to %2 ms, read %3 times a second")
                 .arg(written(quantile(longest, 0), 1), written(quantile(longest, 1), 1), written(reads, 0)),
             QStringLiteral("< 16 ms"), quantile(longest, 1) < aim}};
}

} // namespace tessary::benchmarks
