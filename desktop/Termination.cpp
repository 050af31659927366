#include "desktop/Termination.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>

namespace tessary::desktop {
namespace {

constexpr std::array terminationSignals{SIGTERM, SIGINT, SIGHUP};

volatile std::sig_atomic_t requestedBy = 0;
volatile std::sig_atomic_t eventForLoop{};

extern "C" void noteRequest(int signal)
{
    const int error = errno; // of what is interrupted
    requestedBy = signal;
    const auto count = static_cast<std::uint64_t>(signal); // any but nothing
    [[maybe_unused]] const ssize_t written = write(eventForLoop, &count, sizeof count);
    errno = error;
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

// Unlike the toolkit's event loop, which needs the same and was made before, this need not look whether there
// is one.
Termination::Termination() : m_notifier(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK), QSocketNotifier::Read)
{
    eventForLoop = static_cast<int>(m_notifier.socket());
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
            setHandler(signal, SIG_DFL, {});
        }
    }
    close(eventForLoop);
}

void endAsRequested()
{
    if (requestedBy != 0) {
        raise(requestedBy);
    }
}

} // namespace tessary::desktop
