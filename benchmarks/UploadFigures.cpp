#include "benchmarks/Figure.h"
#include "benchmarks/Rig.h"
#include "service/APIService.h"
#include "service/Diagnostics.h"
#include "standins/VideoLibrary.h"

#include <QCoro/QCoroTask>
#include <QElapsedTimer>
#include <QEventLoop>

#include <sys/resource.h>

namespace tessary::benchmarks {
namespace {

constexpr int pairs = 14;
constexpr qint64 gibibytes = 4;
constexpr double aim = 1.02;

/// Of one whole upload, in seconds.
struct Run
{
    double whole;    ///< from the click, or from the start of the tool, to the end
    double transfer; ///< from the first block to the last
    double toolCpu;
};

/// Processor seconds of the children that have ended.
double childrenCpu()
{
    rusage usage = {};
    getrusage(RUSAGE_CHILDREN, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// The tool started with nothing around it.
Run runBareTool(Rig& rig, const QString& file)
{
    const SASUrlResponse answer =
        QCoro::waitFor(APIService(rig.service().baseUrl())
                           .requestUploadURL(standins::localWorkspaces().front().key,
                                             QStringLiteral("bare.mp4"), std::stop_token()));
    QProcess tool;
    tool.setInputChannelMode(QProcess::ForwardedInputChannel);
    tool.setStandardOutputFile(QProcess::nullDevice());
    QEventLoop loop;
    QObject::connect(&tool, &QProcess::finished, &loop, &QEventLoop::quit);
    const double before = childrenCpu();
    QElapsedTimer clock;
    clock.start();
    tool.start(standardResourcesFolder() + QStringLiteral("/azcopy"),
               {QStringLiteral("copy"), file, answer.sasUrl, QStringLiteral("--from-to"),
                QStringLiteral("LocalBlob"), QStringLiteral("--log-level"), QStringLiteral("INFO")});
    loop.exec();
    require(tool.exitStatus() == QProcess::NormalExit && tool.exitCode() == 0,
            QStringLiteral("a bare transfer"));
    const double whole = static_cast<double>(clock.nsecsElapsed()) / 1e9;
    return {whole, rig.service().takeTransferTime() / 1e3, childrenCpu() - before};
}

Run runUpload(Rig& rig)
{
    QElapsedTimer clock;
    const double before = childrenCpu();
    QObject::connect(
        &rig.state(), &FileUploaderState::isUploadingChanged, &rig.state(), [&clock] { clock.start(); },
        Qt::SingleShotConnection);
    rig.click("uploadButton");
    rig.await(UploadState::Completed);
    const double whole = static_cast<double>(clock.nsecsElapsed()) / 1e9;
    rig.awaitIdle();
    runFor(std::chrono::seconds(3)); // the success overlay comes and goes
    return {whole, rig.service().takeTransferTime() / 1e3, childrenCpu() - before};
}

/// One part of the program's uploads beside the same of the bare ones: the least of each, since whatever the
/// machine does besides only adds, and for comparison the pairs' ratios.
Figure pairFigure(const QString& name, const std::vector<Run>& ours, const std::vector<Run>& bare,
                  double Run::*part)
{
    std::vector<double> ratios;
    std::vector<double> values;
    std::vector<double> bareValues;
    for (std::size_t pair = 0; pair < ours.size(); ++pair) {
        values.push_back(ours[pair].*part);
        bareValues.push_back(bare[pair].*part);
        ratios.push_back(values.back() / bareValues.back());
    }
    const double least = quantile(values, 0);
    const double leastBare = quantile(bareValues, 0);
    const double ratio = least / leastBare;
    return {name,
            written(least, 2) + QStringLiteral(" s"),
            QStringLiteral("bare AzCopy: %1 s").arg(written(leastBare, 2)),
            QStringLiteral("%1 times; of the pairs %2, half of them %3 to %4")
                .arg(written(ratio, 3), written(quantile(ratios, 0.5), 3), written(quantile(ratios, 0.25), 3),
                     written(quantile(ratios, 0.75), 3)),
            QStringLiteral("≤ %1").arg(aim),
            ratio <= aim};
}

} // namespace

std::vector<Figure> measureUploads()
{
    Rig rig(Rig::Tool::RealIntoSink);
    const QString file = rig.makeFile(QStringLiteral("long.mp4"), gibibytes * 1024 * 1024 * 1024);
    rig.choose(file);
    runBareTool(rig, file); // the first one finds nothing of the file in memory
    std::vector<Run> bare;
    std::vector<Run> ours;
    for (int pair = 0; pair < pairs; ++pair) {
        const bool bareFirst = pair % 2 == 0;
        if (bareFirst) {
            bare.push_back(runBareTool(rig, file));
        }
        ours.push_back(runUpload(rig));
        if (!bareFirst) {
            bare.push_back(runBareTool(rig, file));
        }
        warnLine(QStringLiteral(
                     "  pair %1 of %2: bare %3 s, its blocks %4 s; by the program %5 s, its blocks %6 s")
                     .arg(pair + 1)
                     .arg(pairs)
                     .arg(written(bare.back().whole, 2), written(bare.back().transfer, 2),
                          written(ours.back().whole, 2), written(ours.back().transfer, 2)));
    }
    const QString upload = QStringLiteral("upload of %1 GiB, ").arg(gibibytes);
    return {pairFigure(upload + QStringLiteral("click to the end"), ours, bare, &Run::whole),
            pairFigure(upload + QStringLiteral("first block to the last"), ours, bare, &Run::transfer),
            pairFigure(upload + QStringLiteral("CPU of the tool"), ours, bare, &Run::toolCpu)};
}

} // namespace tessary::benchmarks
