// Starts as the program does, or with a bare window in its place, and prints the milliseconds to the first
// frame and, a second later, the most memory that was used, in bytes.
//   tessary_first_frame bare|text|login|uploader START     START: when the process was launched, in ms of the
//   monotonic clock; a text is one line in an otherwise bare window

#include "app/Program.h"
#include "benchmarks/MonotonicClock.h"
#include "desktop/ProcessSetup.h"
#include "service/Diagnostics.h"
#include "testkit/ProcessUsage.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTimer>

#include <memory>

using namespace tessary;

namespace {

void report(QQuickWindow& window, double start)
{
    QObject::connect(
        &window, &QQuickWindow::frameSwapped, qApp,
        [start] {
            const double milliseconds = benchmarks::monotonicMilliseconds() - start;
            QTimer::singleShot(std::chrono::seconds(1), qApp, [milliseconds] {
                printLine(QStringLiteral("%1 %2")
                              .arg(milliseconds)
                              .arg(testkit::takeProcessUsage().peakResidentBytes));
                QCoreApplication::quit();
            });
        },
        Qt::SingleShotConnection);
}

int showBareWindow(const QByteArray& content, double start)
{
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQuick; Window { width: 900; height: 680; visible: true; " + content + " }",
                      QUrl());
    const std::unique_ptr<QObject> object(component.create());
    auto* window = qobject_cast<QQuickWindow*>(object.get());
    if (window == nullptr) {
        warnLine(component.errorString());
        return EXIT_FAILURE;
    }
    report(*window, start);
    return QCoreApplication::exec();
}

/// @param signedIn with a stored key, whose check gets no answer: the window opens with the uploader screen
int showProgram(bool signedIn, double start)
{
    QTcpServer service;
    const QTemporaryDir settings;
    if (!service.listen(QHostAddress::LocalHost) ||
        (signedIn && !StoredApiKey(settings.path()).write(QStringLiteral("a key")))) {
        return EXIT_FAILURE;
    }
    Program program({QStringLiteral("http://127.0.0.1:%1/api").arg(service.serverPort()), settings.path(),
                     standardResourcesFolder()});
    if (!program.openWindow()) {
        return EXIT_FAILURE;
    }
    report(*program.windows().front(), start);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        return EXIT_FAILURE;
    }
    const QByteArray kind = argv[1];
    const double start = QByteArray(argv[2]).toDouble();
    if (kind == "bare" || kind == "text") {
        const QGuiApplication application(argc, argv);
        return showBareWindow(kind == "text" ? "Text { text: 'One line of text' }" : "", start);
    }
    desktop::prepareProcess();
    const QGuiApplication application(argc, argv);
    return showProgram(kind == "uploader", start);
}
