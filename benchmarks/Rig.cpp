#include "benchmarks/Rig.h"

#include "app/UploaderStateHolder.h"
#include "local/VideoLibrary.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QTimer>

#include <csignal>
#include <functional>
#include <stdexcept>
#include <sys/prctl.h>

namespace tessary::local {
namespace {

constexpr int startMilliseconds = 60'000;
constexpr std::chrono::minutes patience{10};

/// Runs the event loop until the condition holds, which is looked at whenever the signal is emitted.
template <typename Sender>
void await(Sender& sender, void (Sender::*signal)(), const QString& what,
           const std::function<bool()>& condition)
{
    QEventLoop loop;
    QTimer late;
    late.setSingleShot(true);
    late.start(patience);
    QObject::connect(&late, &QTimer::timeout, &loop, &QEventLoop::quit);
    QObject::connect(&sender, signal, &loop, &QEventLoop::quit);
    while (!condition()) {
        require(late.isActive(), what);
        loop.exec();
    }
}

} // namespace

void require(bool done, const QString& what)
{
    if (!done) {
        throw std::runtime_error("Not done: " + what.toStdString());
    }
}

void runFor(std::chrono::milliseconds duration)
{
    QEventLoop loop;
    QTimer::singleShot(duration, &loop, &QEventLoop::quit);
    loop.exec();
}

QString standInFolder()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/stand-in");
}

ServiceProcess::ServiceProcess(bool withStore)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    m_process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/tessary_local_service"),
                    withStore ? QStringList{QStringLiteral("--store")} : QStringList{});
    while (!m_process.canReadLine()) {
        require(m_process.waitForReadyRead(startMilliseconds),
                QStringLiteral("the start of the local service"));
    }
    m_baseUrl = QString::fromUtf8(m_process.readLine()).trimmed();
}

ServiceProcess::~ServiceProcess()
{
    m_process.closeWriteChannel(); // it ends with its input, and its store with it
    m_process.waitForFinished();
}

Rig::Rig(Tool tool)
    : m_service(tool == Tool::Real),
      m_program({m_service.baseUrl(), m_folder.filePath(QStringLiteral("settings")),
                 tool == Tool::Real ? standardResourcesFolder() : standInFolder()})
{
    qputenv("AZCOPY_LOG_LOCATION", m_folder.filePath(QStringLiteral("azcopy")).toUtf8());
    qputenv("AZCOPY_JOB_PLAN_LOCATION", m_folder.filePath(QStringLiteral("azcopy")).toUtf8());
    require(m_program.openWindow(), QStringLiteral("the window"));
    m_driver.emplace(window());
    require(m_driver->type(QStringLiteral("keyField"), localWorkspaces().front().key) &&
                m_driver->click(QStringLiteral("submitKeyButton")) &&
                m_driver->ready(QStringLiteral("filePicker")),
            QStringLiteral("signing in"));
}

void Rig::choose(const QString& file)
{
    require(m_driver->drop(QStringLiteral("filePicker"), {QUrl::fromLocalFile(file)}) &&
                m_driver->type(QStringLiteral("nameField"), QStringLiteral("A long shot")),
            QStringLiteral("filling in the form"));
}

void Rig::click(const QString& name)
{
    require(m_driver->click(name), QStringLiteral("a click on ") + name);
}

FileUploaderState& Rig::state() const
{
    const auto* holder = window().findChild<UploaderStateHolder*>();
    require(holder != nullptr && holder->state() != nullptr, QStringLiteral("the uploader screen"));
    return *holder->state();
}

void Rig::awaitStatus(const QString& text) const
{
    FileUploaderState& screen = state();
    await(screen, &FileUploaderState::statusMessageChanged, text, [&screen, &text] {
        require(!screen.statusMessage().startsWith(u"Error"), screen.statusMessage());
        return screen.statusMessage() == text;
    });
}

void Rig::awaitLog(const QString& text) const
{
    FileUploaderState& screen = state();
    await(screen, &FileUploaderState::logsChanged, text,
          [&screen, &text] { return screen.logs().contains(text); });
}

void Rig::awaitIdle()
{
    UploadActivity& activity = *m_program.application().uploadActivity();
    await(activity, &UploadActivity::underWayChanged, QStringLiteral("the end of all uploads"),
          [&activity] { return !activity.underWay(); });
}

} // namespace tessary::local
