#include "benchmarks/Rig.h"

#include "standins/VideoLibrary.h"
#include "testkit/ProcessUsage.h"

#include <QEventLoop>
#include <QFile>
#include <QGuiApplication>
#include <QQuickWindow>
#include <QTimer>

#include <algorithm>
#include <csignal>
#include <functional>
#include <stdexcept>
#include <sys/prctl.h>
#include <xcb/xcb.h>

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

ServiceProcess::Store storeFor(Rig::Tool tool)
{
    switch (tool) {
    case Rig::Tool::Real:
        return ServiceProcess::Store::Azurite;
    case Rig::Tool::RealIntoSink:
        return ServiceProcess::Store::Sink;
    case Rig::Tool::RealOverLink:
        return ServiceProcess::Store::Link;
    case Rig::Tool::StandIn:
        break;
    }
    return ServiceProcess::Store::None;
}

QStringList options(ServiceProcess::Store store)
{
    switch (store) {
    case ServiceProcess::Store::Azurite:
        return {QStringLiteral("--store")};
    case ServiceProcess::Store::Sink:
        return {QStringLiteral("--sink"), QStringLiteral("0")};
    case ServiceProcess::Store::Link:
        return {QStringLiteral("--sink"), QStringLiteral("120")};
    case ServiceProcess::Store::None:
        break;
    }
    return {};
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

double cpuShareFor(std::chrono::milliseconds duration)
{
    const auto before = testkit::takeProcessUsage().ownCpu;
    runFor(duration);
    return std::chrono::duration<double>(testkit::takeProcessUsage().ownCpu - before) /
           std::chrono::duration<double>(duration);
}

std::vector<double> cpuSharesFor(int rounds, std::chrono::milliseconds duration)
{
    std::vector<double> shares(static_cast<std::size_t>(rounds));
    std::generate(shares.begin(), shares.end(), [duration] { return cpuShareFor(duration); });
    return shares;
}

void takeFromTheScreen(const QQuickWindow& window)
{
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    require(x11 != nullptr, QStringLiteral("an X server"));
    xcb_unmap_window(x11->connection(), static_cast<xcb_window_t>(window.winId()));
    xcb_flush(x11->connection());
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
                    options(store));
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
    : m_service(storeFor(tool)),
      m_fixture(m_service.baseUrl(), tool == Tool::StandIn ? standInFolder() : standardResourcesFolder())
{
    qputenv("AZCOPY_LOG_LOCATION", m_fixture.pathOf(QStringLiteral("azcopy")).toUtf8());
    qputenv("AZCOPY_JOB_PLAN_LOCATION", m_fixture.pathOf(QStringLiteral("azcopy")).toUtf8());
    require(m_fixture.signIn(standins::localWorkspaces().front().key), QStringLiteral("signing in"));
}

QString Rig::makeFile(const QString& name, qint64 size) const
{
    QFile file(m_fixture.pathOf(name));
    require(file.open(QIODevice::WriteOnly) && file.resize(size), file.errorString());
    return file.fileName();
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
