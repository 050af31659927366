#include "benchmarks/Figure.h"
#include "benchmarks/Rig.h"
#include "service/APIService.h"
#include "service/Diagnostics.h"
#include "standins/VideoLibrary.h"
#include "testkit/ProcessUsage.h"

#include <QCoro/QCoroTask>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QRandomGenerator>

#include <array>
#include <sys/resource.h>

namespace tessary::benchmarks {
namespace {

constexpr int pairs = 10;
constexpr qint64 fileBytes = 2560LL * 1024 * 1024;
constexpr double aim = 1.02;

/// Of one whole upload, in seconds.
struct Run
{
    double whole;    ///< from the click, or from the start of the tool, to the end
    double transfer; ///< from the first block to the last
    double toolCpu;
    double ownCpu = 0; ///< of this process
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

void writeRandomFile(const QString& path)
{
    QFile file(path);
    require(file.open(QIODevice::WriteOnly), file.errorString());
    std::vector<quint32> block(1024 * 1024);
    for (qint64 left = fileBytes; left > 0;) {
        QRandomGenerator::global()->fillRange(block.data(), static_cast<qsizetype>(block.size()));
        const qint64 written = file.write(reinterpret_cast<const char*>(block.data()),
                                          static_cast<qint64>(block.size() * sizeof(quint32)));
        require(written > 0, file.errorString());
        left -= written;
    }
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

Run runUpload(Rig& rig, bool showDetails)
{
    rig.state().setShowDetails(showDetails);
    require(rig.fixture().driver().ready(QStringLiteral("uploadButton")),
            QStringLiteral("the upload button"));
    QElapsedTimer clock;
    const double childrenBefore = childrenCpu();
    const auto before = testkit::takeProcessUsage().ownCpu;
    QObject::connect(
        &rig.state(), &FileUploaderState::isUploadingChanged, &rig.state(), [&clock] { clock.start(); },
        Qt::SingleShotConnection);
    rig.click("uploadButton");
    rig.await(UploadState::Completed);
    const double seconds = static_cast<double>(clock.nsecsElapsed()) / 1e9;
    const std::chrono::duration<double> used = testkit::takeProcessUsage().ownCpu - before;
    rig.awaitIdle();
    runFor(std::chrono::seconds(3)); // the success overlay comes and goes
    return {seconds, rig.service().takeTransferTime() / 1e3, childrenCpu() - childrenBefore, used.count()};
}

Figure shareFigure(const QString& name, const std::vector<double>& shares, double bound)
{
    const double share = quantile(shares, 0.5);
    return {name,
            written(share * 100, 2) + QStringLiteral(" %"),
            QStringLiteral("one core"),
            QStringLiteral("highest %1 %").arg(written(quantile(shares, 1) * 100, 2)),
            QStringLiteral("< %1 %").arg(bound * 100),
            share < bound};
}

/// One part of the program's uploads beside the same of the bare ones, pair by pair.
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
    const double ratio = quantile(ratios, 0.5);
    return {
        name,
        written(quantile(values, 0.5), 2) + QStringLiteral(" s"),
        QStringLiteral("bare AzCopy: %1 s").arg(written(quantile(bareValues, 0.5), 2)),
        QStringLiteral("%1 times (half of them %2 to %3)")
            .arg(written(ratio, 3), written(quantile(ratios, 0.25), 3), written(quantile(ratios, 0.75), 3)),
        QStringLiteral("≤ %1").arg(aim),
        ratio <= aim};
}

} // namespace

std::vector<Figure> measureUploads()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("long.mp4"));
    writeRandomFile(file);
    Rig rig(Rig::Tool::RealIntoSink);
    rig.choose(file);
    std::vector<Run> bare;
    std::vector<Run> ours;
    std::array<std::vector<double>, 2> shares; // details hidden, details shown
    for (int pair = 0; pair < pairs; ++pair) {
        const bool bareFirst = pair % 2 == 0;
        if (bareFirst) {
            bare.push_back(runBareTool(rig, file));
        }
        const bool showDetails = pair % 4 < 2;
        ours.push_back(runUpload(rig, showDetails));
        shares.at(showDetails ? 1 : 0).push_back(ours.back().ownCpu / ours.back().whole);
        if (!bareFirst) {
            bare.push_back(runBareTool(rig, file));
        }
        warnLine(QStringLiteral("  pair %1 of %2: bare %3 s, by the program %4 s")
                     .arg(pair + 1)
                     .arg(pairs)
                     .arg(written(bare.back().whole, 2), written(ours.back().whole, 2)));
    }
    const QString size = QStringLiteral("upload of 2.5 GiB, %1");
    return {pairFigure(size.arg(QStringLiteral("click to the end")), ours, bare, &Run::whole),
            pairFigure(size.arg(QStringLiteral("first block to the last")), ours, bare, &Run::transfer),
            pairFigure(size.arg(QStringLiteral("CPU of the tool")), ours, bare, &Run::toolCpu),
            shareFigure(QStringLiteral("own CPU while uploading, details shown"), shares.at(1), 0.012),
            shareFigure(QStringLiteral("own CPU while uploading, details hidden"), shares.at(0), 0.01)};
}

} // namespace tessary::benchmarks
