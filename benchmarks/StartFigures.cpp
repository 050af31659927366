#include "benchmarks/Figure.h"
#include "benchmarks/MonotonicClock.h"
#include "benchmarks/Rig.h"

#include <QCoreApplication>
#include <QProcess>

#include <map>

namespace tessary::benchmarks {
namespace {

struct Start
{
    double milliseconds;
    double mebibytes;
};

Start start(const QString& kind)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/tessary_first_frame"),
                  {kind, QString::number(monotonicMilliseconds(), 'f', 6)});
    require(process.waitForFinished() && process.exitCode() == 0, QStringLiteral("a start of ") + kind);
    const QList<QByteArray> printed = process.readAllStandardOutput().trimmed().split(' ');
    require(printed.size() == 2, QStringLiteral("a report of ") + kind);
    return {printed.front().toDouble(), printed.back().toDouble() / (1024 * 1024)};
}

Figure ratioFigure(const QString& name, const QString& unit, const std::vector<double>& program,
                   const std::vector<double>& bare)
{
    constexpr double aim = 2;
    const double ours = quantile(program, 0.5);
    const double theirs = quantile(bare, 0.5);
    return {name,
            QStringLiteral("%1 %2").arg(written(ours, 1), unit),
            QStringLiteral("bare window: %1 %2").arg(written(theirs, 1), unit),
            QStringLiteral("%1 times").arg(written(ours / theirs, 2)),
            QStringLiteral("≤ 2"),
            ours <= aim * theirs};
}

} // namespace

std::vector<Figure> measureStart()
{
    constexpr int rounds = 21;
    std::map<QString, std::vector<double>> times;
    std::map<QString, std::vector<double>> sizes;
    const QString bare = QStringLiteral("bare");
    const QString login = QStringLiteral("login");
    const QString uploader = QStringLiteral("uploader");
    for (int round = 0; round < rounds; ++round) {
        for (const QString& kind : {bare, login, uploader}) {
            const Start taken = start(kind);
            if (round > 0) { // the first reads the files from the disk
                times[kind].push_back(taken.milliseconds);
                sizes[kind].push_back(taken.mebibytes);
            }
        }
    }
    const QString ms = QStringLiteral("ms");
    const QString mib = QStringLiteral("MiB");
    return {ratioFigure(QStringLiteral("first frame, login screen"), ms, times[login], times[bare]),
            ratioFigure(QStringLiteral("first frame, uploader screen"), ms, times[uploader], times[bare]),
            ratioFigure(QStringLiteral("peak memory, login screen"), mib, sizes[login], sizes[bare]),
            ratioFigure(QStringLiteral("peak memory, uploader screen"), mib, sizes[uploader], sizes[bare])};
}

} // namespace tessary::benchmarks
