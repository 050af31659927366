#include "benchmarks/Figure.h"
#include "benchmarks/Rig.h"

#include <QCoreApplication>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

namespace tessary::benchmarks {
namespace {

/// The medians in microseconds, by the name of the benchmark.
QHash<QString, double> runMicroBenchmarks()
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/bench_log"),
                  {QStringLiteral("--benchmark_format=json"), QStringLiteral("--benchmark_repetitions=9"),
                   QStringLiteral("--benchmark_enable_random_interleaving=true"),
                   QStringLiteral("--benchmark_report_aggregates_only=true")});
    constexpr int minutes = 5 * 60'000;
    require(process.waitForFinished(minutes) && process.exitCode() == 0,
            QStringLiteral("the micro benchmarks"));
    QHash<QString, double> medians;
    const QJsonObject report = QJsonDocument::fromJson(process.readAllStandardOutput()).object();
    for (const auto entry : report[QStringLiteral("benchmarks")].toArray()) {
        if (entry[QStringLiteral("aggregate_name")].toString() == QLatin1StringView("median")) {
            medians.insert(entry[QStringLiteral("run_name")].toString(),
                           entry[QStringLiteral("cpu_time")].toDouble() / 1e3);
        }
    }
    return medians;
}

} // namespace

std::vector<Figure> measureLog()
{
    constexpr double aim = 1.5;
    const QHash<QString, double> medians = runMicroBenchmarks();
    std::vector<Figure> figures;
    for (const auto& [kind, suffix] :
         {std::pair{"plain text", "/combining:0"}, std::pair{"combining characters", "/combining:1"}}) {
        const double call =
            medians.value(QLatin1StringView("processOutputOnAFullLog") + QLatin1StringView(suffix));
        const double pass = medians.value(QLatin1StringView("onePass") + QLatin1StringView(suffix));
        require(call > 0 && pass > 0, QStringLiteral("a figure of the micro benchmarks"));
        figures.push_back({QLatin1StringView("processOutput on a full log, ") + QLatin1StringView(kind),
                           written(call, 1) + QStringLiteral(" µs"),
                           QStringLiteral("one pass: %1 µs").arg(written(pass, 1)),
                           QStringLiteral("%1 times").arg(written(call / pass, 2)), QStringLiteral("≤ 1.5"),
                           call <= aim * pass});
    }
    return figures;
}

} // namespace tessary::benchmarks
