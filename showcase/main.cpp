#include "app/Program.h"
#include "desktop/ProcessSetup.h"
#include "service/Diagnostics.h"
#include "showcase/DemoTour.h"

#include <QGuiApplication>
#include <QTemporaryDir>

#include <exception>

namespace tessary::showcase {

using namespace standins;

namespace {

void printInvitation()
{
    printLine(u"The program runs against a service and a blob store on this machine. Sign in with one of "
              u"these keys:");
    for (const LocalWorkspace& workspace : localWorkspaces()) {
        printLine(QStringLiteral("  %1   %2").arg(workspace.key, workspace.name));
    }
    printLine(QStringLiteral("A video to upload: %1").arg(QStringLiteral(TESSARY_SAMPLE)));
}

int runDemo(bool asTour)
{
    const QTemporaryDir folder; // the settings, and what the transfer tool writes about its jobs
    qputenv("AZCOPY_LOG_LOCATION", folder.filePath(QStringLiteral("azcopy")).toUtf8());
    qputenv("AZCOPY_JOB_PLAN_LOCATION", folder.filePath(QStringLiteral("azcopy")).toUtf8());

    Azurite azurite;
    for (const LocalWorkspace& workspace : localWorkspaces()) {
        azurite.createContainer(workspace.container);
    }
    LocalService service(azurite.store());
    Program program(
        {service.baseUrl(), folder.filePath(QStringLiteral("settings")), standardResourcesFolder()});
    if (!asTour) {
        QObject::connect(&service, &LocalService::videoRegistered, &service,
                         [](const RegisteredVideo& video) {
                             printLine(QStringLiteral("The library gained %1, \"%2\": %3")
                                           .arg(video.id)
                                           .arg(video.videoName, video.uploadedUrl));
                         });
        printInvitation();
        return program.run();
    }
    printLine(u"The tour:");
    const bool complete = DemoTour(program, service, azurite, QStringLiteral(TESSARY_PICTURES)).run();
    printLine(complete ? QStringLiteral("The tour is complete. Its pictures are in %1")
                             .arg(QStringLiteral(TESSARY_PICTURES))
                       : QStringLiteral("The tour FAILED."));
    return complete ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace
} // namespace tessary::showcase

int main(int argc, char** argv)
{
    tessary::desktop::prepareProcess();
    const QGuiApplication application(argc, argv);
    try {
        return tessary::showcase::runDemo(QGuiApplication::arguments().contains(QStringLiteral("--tour")));
    } catch (const std::exception& problem) {
        tessary::warnLine(QString::fromUtf8(problem.what()));
        return EXIT_FAILURE;
    }
}
