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

namespace tessary::benchmarks {
namespace {

constexpr int rounds = 3;
constexpr qint64 fileBytes = 2560LL * 1024 * 1024;
constexpr double shortestTransfer = 10; ///< seconds

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

/// Seconds that the tool takes when it is started with nothing around it.
double runBareTool(const Rig& rig, const QString& file)
{
    const SASUrlResponse answer =
        QCoro::waitFor(APIService(rig.serviceRoot())
                           .requestUploadURL(standins::localWorkspaces().front().key,
                                             QStringLiteral("bare.mp4"), std::stop_token()));
    QProcess tool;
    tool.setInputChannelMode(QProcess::ForwardedInputChannel);
    tool.setStandardOutputFile(QProcess::nullDevice());
    QEventLoop loop;
    QObject::connect(&tool, &QProcess::finished, &loop, &QEventLoop::quit);
    QElapsedTimer clock;
    clock.start();
    tool.start(standardResourcesFolder() + QStringLiteral("/azcopy"),
               {QStringLiteral("copy"), file, answer.sasUrl, QStringLiteral("--from-to"),
                QStringLiteral("LocalBlob"), QStringLiteral("--log-level"), QStringLiteral("INFO")});
    loop.exec();
    require(tool.exitStatus() == QProcess::NormalExit && tool.exitCode() == 0,
            QStringLiteral("a bare transfer"));
    return static_cast<double>(clock.nsecsElapsed()) / 1e9;
}

struct Run
{
    double seconds;
    double cpuShare; ///< of one core, the tool's excluded
};

Run runUpload(Rig& rig, bool showDetails)
{
    rig.state().setShowDetails(showDetails);
    require(rig.fixture().driver().ready(QStringLiteral("uploadButton")),
            QStringLiteral("the upload button"));
    QElapsedTimer clock;
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
    return {seconds, used.count() / seconds};
}

Figure shareFigure(const QString& name, const std::vector<double>& shares, double aim)
{
    const double share = quantile(shares, 0.5);
    return {name,
            written(share * 100, 2) + QStringLiteral(" %"),
            QStringLiteral("one core"),
            QStringLiteral("highest %1 %").arg(written(quantile(shares, 1) * 100, 2)),
            QStringLiteral("< %1 %").arg(written(aim * 100, 0)),
            share < aim};
}

} // namespace

std::vector<Figure> measureUploads()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("long.mp4"));
    writeRandomFile(file);
    std::vector<double> bare;
    std::vector<double> whole;
    std::vector<double> ratios;
    std::array<std::vector<double>, 2> shares; // details hidden, details shown
    for (int round = 0; round < rounds; ++round) {
        Rig rig(Rig::Tool::Real); // a new store each round, or the disk fills up
        rig.choose(file);
        std::array<double, 2> seconds{};
        for (const int turn : {0, 1, 2}) {
            // Each comes first, second and last in turn.
            const int kind = (turn + round) % 3;
            if (kind == 2) {
                bare.push_back(runBareTool(rig, file));
                continue;
            }
            const Run run = runUpload(rig, kind == 1);
            seconds.at(static_cast<std::size_t>(kind)) = run.seconds;
            shares.at(static_cast<std::size_t>(kind)).push_back(run.cpuShare);
        }
        for (const double taken : seconds) {
            whole.push_back(taken);
            ratios.push_back(taken / bare.back());
        }
        warnLine(QStringLiteral("  upload round %1 of %2: bare %3 s, details hidden %4 s, shown %5 s")
                     .arg(round + 1)
                     .arg(rounds)
                     .arg(written(bare.back(), 2), written(seconds.at(0), 2), written(seconds.at(1), 2)));
    }
    require(quantile(bare, 0) >= shortestTransfer, QStringLiteral("a bare transfer of 10 s"));
    const double ratio = quantile(ratios, 0.5);
    constexpr double aim = 1.02;
    return {{QStringLiteral("whole upload of 2.5 GiB"),
             written(quantile(whole, 0.5), 2) + QStringLiteral(" s"),
             QStringLiteral("bare AzCopy: %1 s").arg(written(quantile(bare, 0.5), 2)),
             QStringLiteral("%1 times (%2 to %3)")
                 .arg(written(ratio, 3), written(quantile(ratios, 0), 3), written(quantile(ratios, 1), 3)),
             QStringLiteral("≤ 1.02"), ratio <= aim},
            shareFigure(QStringLiteral("own CPU while uploading, details shown"), shares.at(1), 0.05),
            shareFigure(QStringLiteral("own CPU while uploading, details hidden"), shares.at(0), 0.02)};
}

} // namespace tessary::benchmarks
