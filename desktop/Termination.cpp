#include "desktop/Termination.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace tessary::desktop {
namespace {

constexpr std::array terminationSignals{SIGTERM, SIGINT, SIGHUP};

volatile std::sig_atomic_t requestedBy = 0;
volatile std::sig_atomic_t pipeToLoop = -1;

extern "C" void noteRequest(int signal)
{
    const int error = errno; // of what is interrupted
    requestedBy = signal;
    const char anything = 0;
    [[maybe_unused]] const ssize_t written = write(pipeToLoop, &anything, sizeof anything);
    errno = error;
}

/// Makes the pipe and returns the end to be read.
int openPipe()
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        qFatal("No pipe for signals.");
    }
    pipeToLoop = ends[1];
    return ends[0];
}

void setHandler(int signal, void (*handler)(int), int flags)
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    sigaction(signal, &action, nullptr);
}

bool isIgnored(int signal)
{
    struct sigaction action = {};
    sigaction(signal, nullptr, &action);
    return action.sa_handler == SIG_IGN;
}

} // namespace

Termination::Termination() : m_end(openPipe()), m_notifier(m_end, QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, [this] {
        m_notifier.setEnabled(false);
        Q_EMIT requested();
    });
    for (const int signal : terminationSignals) {
        if (!isIgnored(signal)) {
            // Once: who asks again does not want to wait. A terminal that closes sends its own more than
            // once, though.
            const int once = signal == SIGHUP ? 0 : static_cast<int>(SA_RESETHAND);
            setHandler(signal, noteRequest, SA_RESTART | once);
        }
    }
}

Termination::~Termination()
{
    for (const int signal : terminationSignals) {
        if (!isIgnored(signal)) {
            setHandler(signal, SIG_DFL, 0);
        }
    }
    close(m_end);
    close(pipeToLoop);
}

void endAsRequested()
{
    if (requestedBy != 0) {
        raise(requestedBy);
    }
}

} // namespace tessary::desktop
