#include "benchmarks/Rig.h"

#include "standins/VideoLibrary.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QTimer>

#include <csignal>
#include <functional>
#include <stdexcept>
#include <sys/prctl.h>

namespace tessary::benchmarks {
namespace {

constexpr int startMilliseconds = 60'000;
constexpr std::chrono::minutes patience{10};

/// Runs the event loop until the condition holds, which is looked at whenever the signal is emitted.
template <typename Sender>
void awaitChange(Sender& sender, void (Sender::*signal)(), const QString& what,
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

ServiceProcess::ServiceProcess(Store store)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    m_process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/tessary_local_service"),
                    store == Store::Azurite ? QStringList{QStringLiteral("--store")}
                    : store == Store::Sink  ? QStringList{QStringLiteral("--sink")}
                                            : QStringList{});
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

double ServiceProcess::takeTransferTime()
{
    while (!m_process.canReadLine()) {
        require(m_process.waitForReadyRead(startMilliseconds), QStringLiteral("an upload into the sink"));
    }
    const QList<QByteArray> times = m_process.readLine().trimmed().split(' ');
    require(times.size() == 2, QStringLiteral("a report of the sink"));
    return times.back().toDouble() - times.front().toDouble();
}

Rig::Rig(Tool tool)
    : m_service(tool == Tool::Real           ? ServiceProcess::Store::Azurite
                : tool == Tool::RealIntoSink ? ServiceProcess::Store::Sink
                                             : ServiceProcess::Store::None),
      m_fixture(m_service.baseUrl(), tool == Tool::StandIn ? standInFolder() : standardResourcesFolder())
{
    qputenv("AZCOPY_LOG_LOCATION", m_fixture.pathOf(QStringLiteral("azcopy")).toUtf8());
    qputenv("AZCOPY_JOB_PLAN_LOCATION", m_fixture.pathOf(QStringLiteral("azcopy")).toUtf8());
    require(m_fixture.signIn(standins::localWorkspaces().front().key), QStringLiteral("signing in"));
}

void Rig::choose(const QString& file)
{
    require(m_fixture.fillForm(QUrl::fromLocalFile(file), QStringLiteral("A long shot")),
            QStringLiteral("filling in the form"));
}

void Rig::click(const char* name)
{
    require(m_fixture.click(name), QLatin1StringView("a click on ") + QLatin1StringView(name));
}

void Rig::await(UploadState wanted) const
{
    FileUploaderState& screen = state();
    awaitChange(screen, &FileUploaderState::statusMessageChanged, statusMessageOf(wanted), [&screen, wanted] {
        require(screen.uploadState() != UploadState::Failed, screen.statusMessage());
        return screen.uploadState() == wanted;
    });
}

void Rig::awaitLog(const QString& text) const
{
    FileUploaderState& screen = state();
    awaitChange(screen, &FileUploaderState::logsChanged, text,
                [&screen, &text] { return screen.logs().contains(text); });
}

void Rig::awaitIdle()
{
    UploadActivity& activity = *m_fixture.application().uploadActivity();
    awaitChange(activity, &UploadActivity::underWayChanged, QStringLiteral("the end of all uploads"),
                [&activity] { return !activity.underWay(); });
}

} // namespace tessary::benchmarks
