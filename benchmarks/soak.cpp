// Uploads for as long as told, through one window, and sees to it that what the program holds does not grow.
//   tessary_soak MINUTES      four fifths of the time with the stand-in for the transfer tool, the rest with
//   the real one
// Ends with 1 when a bound is passed or an upload does not end as it should.

#include "benchmarks/Figure.h"
#include "benchmarks/Rig.h"
#include "desktop/ProcessSetup.h"
#include "service/Diagnostics.h"
#include "testkit/ProcessUsage.h"

#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickWindow>

#include <algorithm>
#include <array>
#include <exception>
#include <functional>
#include <malloc.h>

using namespace tessary;
using namespace tessary::benchmarks;

namespace {

constexpr int samplesPerPart = 10;
constexpr int turns = 8; ///< after so many uploads each way to end has been taken
constexpr double mebibyte = 1024.0 * 1024.0;

/// How far what is held at the end of a part may lie above what was held after its first tenth.
constexpr double memoryBound = 4; ///< MiB
constexpr int descriptorBound = 0;
constexpr int threadBound = 0;
constexpr int processBound = 0;

QString folderOf(Rig::Tool tool)
{
    // The stand-in reads no file, the real tool does.
    return tool == Rig::Tool::StandIn ? QStringLiteral("/videos/") : QStringLiteral(TESSARY_SAMPLES);
}

void upload(Rig& rig, const QString& format, const QString& file)
{
    FileUploaderState& screen = rig.state();
    screen.selectFormat(format);
    screen.setVideoName(QStringLiteral("Again and again"));
    screen.setSelectedFile(QUrl::fromLocalFile(file));
    screen.setSelectedFileLeft(QUrl::fromLocalFile(file));
    screen.setSelectedFileRight(QUrl::fromLocalFile(file));
    screen.startUpload();
}

void uploadWell(Rig& rig, const QString& format, const QString& file)
{
    upload(rig, format, file);
    rig.await(UploadState::Completed);
    rig.awaitIdle();
    require(rig.state().logs().contains(u"Video uploaded. Library ID: "), QStringLiteral("a registration"));
}

void uploadInVain(Rig& rig)
{
    upload(rig, QStringLiteral("2D"), folderOf(Rig::Tool::StandIn) + QStringLiteral("failing.mp4"));
    rig.awaitIdle();
    const QString status = rig.state().statusMessage();
    require(status == QLatin1StringView("Error: AzCopy exited with code 3"), status);
}

void cancel(Rig& rig)
{
    upload(rig, QStringLiteral("2D"), folderOf(Rig::Tool::StandIn) + QStringLiteral("patient.mp4"));
    rig.awaitLog(QStringLiteral("ready"));
    rig.state().cancelUpload();
    rig.awaitIdle();
    const QString status = rig.state().statusMessage();
    require(status == statusMessageOf(UploadState::Cancelled), status);
}

void openAndCloseAWindow(Rig& rig)
{
    require(rig.fixture().program().openWindow(), QStringLiteral("a second window"));
    runFor(std::chrono::milliseconds(200));
    // From the event loop, as a person closes it: what is to be deleted later is deleted then.
    QMetaObject::invokeMethod(rig.fixture().program().windows().back(), &QWindow::close,
                              Qt::QueuedConnection);
    runFor(std::chrono::milliseconds(200));
}

/// The next of an endless row of uploads that end in every way.
void takeTurn(Rig& rig, Rig::Tool tool, int turn)
{
    if (tool == Rig::Tool::Real) {
        uploadWell(rig, turn % 4 == 3 ? QStringLiteral("Separate") : QStringLiteral("2D"),
                   folderOf(tool) + QStringLiteral("sample.mp4"));
        return;
    }
    const QString good = folderOf(tool) + QStringLiteral("good.mp4");
    switch (turn % turns) {
    case 5:
        uploadInVain(rig);
        break;
    case 6:
        cancel(rig);
        break;
    case 7:
        uploadWell(rig, QStringLiteral("Separate"), good);
        break;
    default:
        uploadWell(rig, QStringLiteral("2D"), good);
    }
    if (turn % 100 == 99) {
        openAndCloseAWindow(rig);
    }
}

void printRow(const QString& tool, int uploads, const testkit::ProcessUsage& readings)
{
    printLine(QStringLiteral("| %1 | %2 | %3 | %4 | %5 | %6 |")
                  .arg(tool)
                  .arg(uploads)
                  .arg(written(static_cast<double>(readings.residentBytes) / mebibyte, 1))
                  .arg(readings.descriptors)
                  .arg(readings.threads)
                  .arg(readings.children.size()));
}

bool within(const char* what, double growth, double bound)
{
    printLine(QStringLiteral("%1 grew by %2, at most %3 allowed: %4")
                  .arg(QLatin1StringView(what), written(growth, 1), written(bound, 1),
                       growth <= bound ? QStringLiteral("flat") : QStringLiteral("NOT FLAT")));
    return growth <= bound;
}

/// What is held when what is free has been given back, so that small growth shows.
testkit::ProcessUsage takeReadingsAtRest(Rig& rig)
{
    runFor(std::chrono::seconds(1)); // what is to be deleted later is deleted
    qmlEngine(&rig.fixture().window())->collectGarbage();
    malloc_trim(0);
    return testkit::takeProcessUsage();
}

bool soak(Rig::Tool tool, std::chrono::milliseconds duration)
{
    const QString name = tool == Rig::Tool::Real ? QStringLiteral("AzCopy") : QStringLiteral("stand-in");
    Rig rig(tool);
    printLine(u"\n| Tool | Uploads | Resident MiB | Descriptors | Threads | Child processes |");
    printLine(u"|---|---|---|---|---|---|");
    int uploads = 0;
    while (uploads < turns) { // what is made once and kept, and a connection for each eye
        takeTurn(rig, tool, uploads++);
    }
    std::vector<testkit::ProcessUsage> samples;
    for (int i = 0; i < samplesPerPart; ++i) {
        const QDeadlineTimer end(duration / samplesPerPart);
        do {
            takeTurn(rig, tool, uploads++);
        } while (!end.hasExpired());
        samples.push_back(takeReadingsAtRest(rig));
        printRow(name, uploads, samples.back());
    }
    const testkit::ProcessUsage& first = samples.front();
    const testkit::ProcessUsage& last = samples.back();
    printLine(QString());
    const std::array flat{
        within("Memory (MiB)", static_cast<double>(last.residentBytes - first.residentBytes) / mebibyte,
               memoryBound),
        within("Descriptors", last.descriptors - first.descriptors, descriptorBound),
        within("Threads", last.threads - first.threads, threadBound),
        within("Child processes", static_cast<double>(last.children.size() - first.children.size()),
               processBound)};
    return std::all_of(flat.begin(), flat.end(), std::identity());
}

} // namespace

int main(int argc, char** argv)
{
    desktop::prepareProcess();
    const QGuiApplication application(argc, argv);
    bool isNumber = false;
    const double minutes = QGuiApplication::arguments().value(1).toDouble(&isNumber);
    if (!isNumber || minutes <= 0) {
        warnLine(u"Usage: tessary_soak MINUTES");
        return EXIT_FAILURE;
    }
    try {
        const std::chrono::milliseconds whole(static_cast<qint64>(minutes * 60'000));
        const bool withStandIn = soak(Rig::Tool::StandIn, whole * 4 / 5);
        const bool withTool = soak(Rig::Tool::Real, whole / 5);
        return withStandIn && withTool ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& problem) {
        warnLine(QString::fromUtf8(problem.what()));
        return EXIT_FAILURE;
    }
}
