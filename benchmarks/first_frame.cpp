// Starts as the program does, or with a bare window in its place, and prints the milliseconds to the first
// frame and, STAY ms later, the most memory that was used, in bytes, and the window's size.
//   tessary_first_frame program START STAY SETTINGS SERVICE
//   tessary_first_frame bare|text START STAY WIDTH HEIGHT
// START is when the process was launched, in ms of the monotonic clock, SETTINGS the folder with the key, if
// there is one, SERVICE its base URL. A text is one line in an otherwise bare window.

#include "app/Program.h"
#include "benchmarks/MonotonicClock.h"
#include "desktop/FontsAhead.h"
#include "desktop/ProcessSetup.h"
#include "service/Diagnostics.h"
#include "testkit/ProcessUsage.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QTimer>

#include <chrono>
#include <memory>

using namespace tessary;

namespace {

struct Times
{
    double start; ///< in ms of the monotonic clock
    std::chrono::milliseconds stay;
};

void report(QQuickWindow& window, const Times& times)
{
    // Where a thread of its own draws, it notes the time: the main thread hears of the frame later.
    const auto milliseconds = std::make_shared<double>();
    constexpr auto once = Qt::SingleShotConnection;
    QObject::connect(
        &window, &QQuickWindow::frameSwapped, &window,
        [=] { *milliseconds = benchmarks::monotonicMilliseconds() - times.start; },
        static_cast<Qt::ConnectionType>(Qt::DirectConnection | once));
    QObject::connect(
        &window, &QQuickWindow::frameSwapped, &window,
        [milliseconds, stay = times.stay, &window] {
            QTimer::singleShot(stay, &window, [milliseconds, &window] {
                printLine(QStringLiteral("%1 %2 %3 %4")
                              .arg(*milliseconds)
                              .arg(testkit::takeProcessUsage().peakResidentBytes)
                              .arg(window.width())
                              .arg(window.height()));
                QCoreApplication::quit();
            });
        },
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | once));
}

/// @param content of the window, size included
int showBareWindow(const QByteArray& content, const Times& times)
{
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQuick; Window { visible: true; " + content + " }", QUrl());
    const std::unique_ptr<QObject> object(component.create());
    auto* window = qobject_cast<QQuickWindow*>(object.get());
    if (window == nullptr) {
        warnLine(component.errorString());
        return EXIT_FAILURE;
    }
    report(*window, times);
    return QCoreApplication::exec();
}

int showProgram(const QString& settings, const QString& service, const Times& times)
{
    Program program({service, settings, standardResourcesFolder()});
    if (!program.openWindow()) {
        return EXIT_FAILURE;
    }
    report(*program.windows().front(), times);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 6) {
        return EXIT_FAILURE;
    }
    const QByteArray kind = argv[1];
    const Times times{QByteArray(argv[2]).toDouble(), std::chrono::milliseconds(QByteArray(argv[3]).toInt())};
    if (kind != "program") {
        const QByteArray size = QByteArray("width: ") + argv[4] + "; height: " + argv[5] + "; ";
        const QGuiApplication application(argc, argv);
        return showBareWindow(size + (kind == "text" ? "Text { text: 'One line of text' }" : ""), times);
    }
    desktop::prepareProcess();
    std::jthread fonts = desktop::readFontsAhead();
    const QGuiApplication application(argc, argv);
    fonts = {};
    return showProgram(QString::fromLocal8Bit(argv[4]), QString::fromLocal8Bit(argv[5]), times);
}
