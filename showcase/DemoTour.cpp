#include "showcase/DemoTour.h"

#include "service/Diagnostics.h"
#include "testkit/WindowDriver.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tessary::showcase {

using namespace standins;
using testkit::WindowDriver;

namespace {

const QString sample = QStringLiteral(TESSARY_SAMPLE);
const QString videoName = QStringLiteral("Harbor at dawn");

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString described(const RegisteredVideo& video)
{
    return QStringLiteral("%1, \"%2\", workspace %3, format %4, %5, %6 degrees, %7")
        .arg(video.id)
        .arg(video.videoName)
        .arg(video.workspaceId)
        .arg(video.fileFormat3D, video.is3D ? QStringLiteral("3D") : QStringLiteral("flat"))
        .arg(video.perspective)
        .arg(video.uploadedUrl);
}

} // namespace

DemoTour::DemoTour(Program& program, LocalService& service, Azurite& azurite, QString pictureFolder)
    : m_program(program), m_service(service), m_azurite(azurite), m_pictureFolder(std::move(pictureFolder))
{
    QDir(m_pictureFolder).removeRecursively();
    QDir().mkpath(m_pictureFolder);
}

bool DemoTour::run()
{
    return m_program.openWindow() && signIn() && fillForm() && upload() && checkLibrary();
}

bool DemoTour::step(const QString& what, bool done)
{
    WindowDriver driver(*m_program.windows().front());
    const QString picture = QStringLiteral("%1/%2-%3.png")
                                .arg(m_pictureFolder)
                                .arg(++m_steps)
                                .arg(QString(what).replace(u' ', u'-').toLower());
    const bool saved = driver.savePicture(picture);
    printLine(QStringLiteral("  %1. %2: %3")
                  .arg(m_steps)
                  .arg(what, done ? QStringLiteral("done") : QStringLiteral("FAILED")));
    return done && saved;
}

bool DemoTour::signIn()
{
    WindowDriver driver(*m_program.windows().front());
    const LocalWorkspace& workspace = localWorkspaces().front();
    return step(QStringLiteral("Typed the key"), driver.type(QStringLiteral("keyField"), workspace.key)) &&
           driver.click(QStringLiteral("submitKeyButton")) && driver.ready(QStringLiteral("filePicker")) &&
           step(QStringLiteral("Signed in"),
                WindowDriver::await(QStringLiteral("the workspace's name"), [this, &workspace] {
                    return m_program.application().sessionManager()->workspaceName() == workspace.name;
                }));
}

bool DemoTour::fillForm()
{
    WindowDriver driver(*m_program.windows().front());
    return step(QStringLiteral("Dropped the sample"),
                driver.drop(QStringLiteral("filePicker"), {QUrl::fromLocalFile(sample)})) &&
           driver.type(QStringLiteral("nameField"), videoName) &&
           step(QStringLiteral("Named the video"), driver.click(QStringLiteral("perspectiveOption:180")));
}

bool DemoTour::upload()
{
    WindowDriver driver(*m_program.windows().front());
    return driver.click(QStringLiteral("uploadButton")) &&
           step(QStringLiteral("Started the upload"),
                driver.shows(QStringLiteral("statusLine"), statusMessageOf(UploadState::Uploading))) &&
           step(QStringLiteral("Copied the file"),
                driver.shows(QStringLiteral("statusLine"), statusMessageOf(UploadState::Completed))) &&
           step(QStringLiteral("Registered the video"),
                WindowDriver::await(QStringLiteral("the registration in the log"), [&driver] {
                    return driver.textOf(QStringLiteral("logText"))
                               .contains(u"Video uploaded. Library ID: ") &&
                           driver.find(QStringLiteral("successOverlay")) == nullptr;
                }));
}

bool DemoTour::checkLibrary()
{
    const std::vector<RegisteredVideo>& videos = m_service.library().videos();
    printLine(QStringLiteral("The library now holds %1 video(s):").arg(videos.size()));
    for (const RegisteredVideo& video : videos) {
        printLine(QStringLiteral("  ") + described(video));
    }
    if (videos.size() != 1 || videos.front().videoName != videoName) {
        return false;
    }
    const QByteArray file = contentOf(sample);
    const QByteArray blob = m_azurite.readBlob(videos.front().uploadedUrl);
    const bool equal = !file.isEmpty() && blob == file;
    printLine(QStringLiteral("Its blob has %1 bytes, the file %2: %3")
                  .arg(blob.size())
                  .arg(file.size())
                  .arg(equal ? QStringLiteral("the same bytes") : QStringLiteral("DIFFERENT")));
    return equal;
}

} // namespace tessary::showcase
