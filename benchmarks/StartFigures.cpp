#include "app/session/StoredApiKey.h"
#include "benchmarks/Figure.h"
#include "benchmarks/MonotonicClock.h"
#include "benchmarks/Rig.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTcpServer>
#include <QTemporaryDir>

#include <array>
#include <chrono>
#include <map>

namespace tessary::benchmarks {
namespace {

struct Start
{
    double milliseconds;
    double mebibytes;
    QStringList windowSize; ///< width and height
};

/// What the window is shown by, and what is aimed at there, as times of a bare window.
struct Surroundings
{
    QString name;
    std::vector<std::pair<QString, QString>> environment; ///< an empty value takes the variable out
    int firstRounds; ///< that are not counted: the first one reads the files from the disk, and what GL's
                     ///< programs were compiled to is kept by the toolkit in one and by the driver in the
                     ///< next
    double loginAim;
    double uploaderAim;
    double memoryAim;
};

constexpr int rounds = 20;    // that are counted
constexpr int longRounds = 4; // of them, in which what comes in after the first frame is waited for

const QString bare = QStringLiteral("bare");
const QString text = QStringLiteral("text");
const QString login = QStringLiteral("login");
const QString uploader = QStringLiteral("uploader");

std::vector<Surroundings> allSurroundings()
{
    const std::pair<QString, QString> hardware{QStringLiteral("QT_QUICK_BACKEND"), QString()};
    const std::pair<QString, QString> byProcessor{QStringLiteral("LIBGL_ALWAYS_SOFTWARE"),
                                                  QStringLiteral("1")};
    const std::pair<QString, QString> wayland{QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("wayland")};
    return {{QStringLiteral("software, X11"), {}, 1, 1.5, 2, 1.5},
            {QStringLiteral("GL on llvmpipe, X11"), {hardware, byProcessor}, 3, 1.3, 1.3, 1.3},
            {QStringLiteral("GL on llvmpipe, Wayland"), {hardware, byProcessor, wayland}, 3, 1.3, 1.3, 1.3}};
}

/// @param windowSize for a bare window; the program's has its own
Start start(const QString& kind, std::chrono::milliseconds stay, const QStringList& windowSize,
            const Surroundings& surroundings)
{
    QTcpServer service; // it never answers: with a key to check, the window opens with the uploader screen
    const QTemporaryDir settings;
    require(service.listen(QHostAddress::LocalHost) &&
                (kind != uploader || StoredApiKey(settings.path()).write(QStringLiteral("a key"))),
            QStringLiteral("what a start finds"));
    const bool isProgram = kind == login || kind == uploader;
    const QString url = QStringLiteral("http://127.0.0.1:%1/api").arg(service.serverPort());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto& [name, value] : surroundings.environment) {
        value.isEmpty() ? environment.remove(name) : environment.insert(name, value);
    }
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/tessary_first_frame"),
                  QStringList{isProgram ? QStringLiteral("program") : kind,
                              QString::number(monotonicMilliseconds(), 'f', 6),
                              QString::number(stay.count())} +
                      (isProgram ? QStringList{settings.path(), url} : windowSize));
    require(process.waitForFinished() && process.exitCode() == 0, QStringLiteral("a start of ") + kind);
    const QStringList printed = QString::fromLatin1(process.readAllStandardOutput()).trimmed().split(u' ');
    require(printed.size() == 4, QStringLiteral("a report of ") + kind);
    return {printed[0].toDouble(), printed[1].toDouble() / (1024 * 1024), printed.mid(2)};
}

Figure ratioFigure(const QString& name, const QString& unit, const std::vector<double>& program,
                   const std::vector<double>& bareWindow, double aim)
{
    const double ours = quantile(program, 0.5);
    const double theirs = quantile(bareWindow, 0.5);
    return {name,
            QStringLiteral("%1 %2").arg(written(ours, 1), unit),
            QStringLiteral("bare window: %1 %2").arg(written(theirs, 1), unit),
            QStringLiteral("%1 times").arg(written(ours / theirs, 2)),
            QStringLiteral("≤ %1").arg(aim),
            ours <= aim * theirs};
}

Figure textFigure(const QString& name, const std::vector<double>& withText,
                  const std::vector<double>& without)
{
    const double more = quantile(withText, 0.5) - quantile(without, 0.5);
    return {name,
            QStringLiteral("%1 ms more").arg(written(more, 1)),
            QStringLiteral("bare window: %1 ms").arg(written(quantile(without, 0.5), 1)),
            QStringLiteral("%1 times").arg(written(quantile(withText, 0.5) / quantile(without, 0.5), 2)),
            QStringLiteral("stated"),
            true};
}

std::vector<Figure> measureStartIn(const Surroundings& surroundings)
{
    std::map<QString, std::vector<double>> times;
    std::map<QString, std::vector<double>> sizes;
    QStringList windowSize; // a bare window is as large as the program's
    for (int round = -surroundings.firstRounds; round < rounds; ++round) {
        const bool isLong = round < longRounds;
        const std::chrono::milliseconds stay{isLong ? 1000 : 0};
        for (const QString& kind : {uploader, login, bare, text}) {
            const Start taken = start(kind, stay, windowSize, surroundings);
            windowSize = taken.windowSize;
            if (round < 0) {
                continue;
            }
            times[kind].push_back(taken.milliseconds);
            if (isLong) {
                sizes[kind].push_back(taken.mebibytes);
            }
        }
    }
    const auto named = [&surroundings](const char* what) {
        return QStringLiteral("%1 (%2)").arg(QLatin1StringView(what), surroundings.name);
    };
    const QString ms = QStringLiteral("ms");
    const QString mib = QStringLiteral("MiB");
    return {
        textFigure(named("first frame, one line of text"), times[text], times[bare]),
        ratioFigure(named("first frame, login screen"), ms, times[login], times[bare], surroundings.loginAim),
        ratioFigure(named("first frame, uploader screen"), ms, times[uploader], times[bare],
                    surroundings.uploaderAim),
        ratioFigure(named("peak memory, login screen"), mib, sizes[login], sizes[bare],
                    surroundings.memoryAim),
        ratioFigure(named("peak memory, uploader screen"), mib, sizes[uploader], sizes[bare],
                    surroundings.memoryAim)};
}

} // namespace

std::vector<Figure> measureStart()
{
    std::vector<Figure> figures;
    for (const Surroundings& surroundings : allSurroundings()) {
        const std::vector<Figure> taken = measureStartIn(surroundings);
        figures.insert(figures.end(), taken.begin(), taken.end());
    }
    return figures;
}

} // namespace tessary::benchmarks
