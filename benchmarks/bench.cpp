// Takes the program's figures and prints them as a table. What goes on meanwhile is said on standard error.
// Ends with 1 when a figure misses its aim or cannot be taken.
//   tessary_bench [NAME...]     all of them, or those named

#include "benchmarks/Figure.h"
#include "benchmarks/Rig.h"
#include "desktop/ProcessSetup.h"
#include "service/Diagnostics.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QSysInfo>

#include <algorithm>
#include <array>
#include <exception>
#include <functional>
#include <thread>

using namespace tessary;
using namespace tessary::benchmarks;

namespace {

struct Measurement
{
    const char* name;
    std::vector<Figure> (*take)();
};

constexpr std::array measurements{
    Measurement{"start", measureStart},       Measurement{"idle", measureIdleness},
    Measurement{"cancel", measureCancelling}, Measurement{"loop", measureEventLoop},
    Measurement{"log", measureLog},           Measurement{"wait", measureWaits},
    Measurement{"frames", measureFrames},     Measurement{"growth", measureGrowth},
    Measurement{"upload", measureUploads},    Measurement{"transfer", measureTransfers},
};

void printHead()
{
    printLine(QStringLiteral("Build %1 (%2), Qt %3, %4, %5 cores")
                  .arg(QStringLiteral(TESSARY_BUILD_TYPE), QStringLiteral(TESSARY_COMPILER),
                       QString::fromLatin1(qVersion()), QSysInfo::prettyProductName())
                  .arg(std::thread::hardware_concurrency()));
    // Known to a window only, and not before it has been shown.
    QQuickWindow window;
    window.show();
    runFor(std::chrono::milliseconds(300));
    const bool software = window.rendererInterface()->graphicsApi() == QSGRendererInterface::Software;
    printLine(QStringLiteral("Renderer %1, platform %2\n")
                  .arg(software ? QStringLiteral("software") : QStringLiteral("of the graphics driver"),
                       QGuiApplication::platformName()));
}

void printTable(const std::vector<Figure>& figures)
{
    printLine(u"| Figure | Measured | Against | Result | Aim | Met |");
    printLine(u"|---|---|---|---|---|---|");
    for (const Figure& figure : figures) {
        printLine(QStringLiteral("| %1 | %2 | %3 | %4 | %5 | %6 |")
                      .arg(figure.name, figure.measured, figure.against, figure.result, figure.aim,
                           figure.met ? QStringLiteral("yes") : QStringLiteral("NO")));
    }
}

} // namespace

int main(int argc, char** argv)
{
    desktop::prepareProcess();
    const QGuiApplication application(argc, argv);
    const QStringList wanted = QGuiApplication::arguments().mid(1);
    try {
        printHead();
        std::vector<Figure> figures;
        for (const Measurement& measurement : measurements) {
            if (wanted.isEmpty() || wanted.contains(QLatin1StringView(measurement.name))) {
                warnLine(QLatin1StringView("Measuring: ") + QLatin1StringView(measurement.name));
                const std::vector<Figure> taken = measurement.take();
                figures.insert(figures.end(), taken.begin(), taken.end());
            }
        }
        printTable(figures);
        const bool allMet = std::all_of(figures.begin(), figures.end(), std::mem_fn(&Figure::met));
        return allMet ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& problem) {
        warnLine(QString::fromUtf8(problem.what()));
        return EXIT_FAILURE;
    }
}
