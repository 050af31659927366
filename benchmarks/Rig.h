#pragma once

#include "testkit/ProgramFixture.h"

#include <QProcess>
#include <QString>

#include <chrono>
#include <vector>

namespace tessary::benchmarks {

/// The local service in a process of its own, so that nothing it uses counts as the program's. It ends with
/// the object, and with this process. The constructor blocks until the service answers; throws
/// std::runtime_error when it does not.
class ServiceProcess
{
public:
    enum class Store { None, Azurite, Sink, Link };

    explicit ServiceProcess(Store store);
    ~ServiceProcess();
    Q_DISABLE_COPY_MOVE(ServiceProcess)

    [[nodiscard]] const QString& baseUrl() const { return m_baseUrl; }

    /// Milliseconds from the first block of the next upload into the sink to its completion.
    [[nodiscard]] double takeTransferTime();

private:
    QProcess m_process;
    QString m_baseUrl;
};

/// One run of the program, signed in, in a window that is worked with mouse and key events. What is asked of
/// it and does not come about throws std::runtime_error. What waits sleeps in the event loop until something
/// is announced: there is no polling whose cost would be taken for the program's.
class Rig
{
public:
    /// The transfer tool: the real one with a real blob store or with one that forgets all, at once or over a
    /// link of 120 MiB/s, or the stand-in.
    enum class Tool { Real, RealIntoSink, RealOverLink, StandIn };

    explicit Rig(Tool tool);

    /// What the window's screen shows.
    [[nodiscard]] FileUploaderState& state() const { return m_fixture.state(); }

    /// A file of that size without any content, which reads as zeros from no disk. It goes with the object.
    [[nodiscard]] QString makeFile(const QString& name, qint64 size) const;

    /// Drops the file on the form and names the video.
    void choose(const QString& file);

    void click(const char* name);

    /// Fails at once when an error is shown instead.
    void await(UploadState state) const;

    /// Waits until the log holds the text.
    void awaitLog(const QString& text) const;

    /// Waits until no upload and no registration is under way.
    void awaitIdle();

    [[nodiscard]] testkit::ProgramFixture& fixture() { return m_fixture; }

    [[nodiscard]] ServiceProcess& service() { return m_service; }

private:
    ServiceProcess m_service;
    testkit::ProgramFixture m_fixture;
};

/// The folder of the stand-in for the transfer tool.
[[nodiscard]] QString standInFolder();

/// Runs the event loop for that long and does nothing else.
void runFor(std::chrono::milliseconds duration);

/// The same; how much of a core this process used meanwhile, children excluded.
[[nodiscard]] double cpuShareFor(std::chrono::milliseconds duration);

/// The same once more in each round: what the host takes for a moment is in one of them.
[[nodiscard]] std::vector<double> cpuSharesFor(int rounds, std::chrono::milliseconds duration);

/// As when it is minimised: the window is there, and nothing of it can be seen.
void takeFromTheScreen(const QQuickWindow& window);

/// Throws std::runtime_error unless the thing was done.
void require(bool done, const QString& what);

} // namespace tessary::benchmarks
