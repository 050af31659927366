#include "desktop/ProcessSetup.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <malloc.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace tessary::desktop {
namespace {

const dev_t nullDevice = makedev(1, 3);

bool isClosed(int descriptor)
{
    return fcntl(descriptor, F_GETFD) == -1;
}

/// Whether a read would give end of file now. Takes nothing from the descriptor.
bool isAtEnd(int descriptor)
{
    struct stat status = {};
    fstat(descriptor, &status);
    if (S_ISCHR(status.st_mode)) {
        return status.st_rdev == nullDevice;
    }
    if (S_ISREG(status.st_mode)) {
        return lseek(descriptor, 0, SEEK_CUR) >= status.st_size;
    }
    pollfd readable{descriptor, POLLIN, {}};
    if (poll(&readable, 1, 0) <= 0) {
        return false;
    }
    int waiting{};
    return ioctl(descriptor, FIONREAD, &waiting) == 0 && waiting == 0;
}

void giveIdleStandardInput()
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return;
    }
    // The writing end stays open, here only, for as long as the program lives.
    dup2(ends[0], STDIN_FILENO);
    close(ends[0]);
}

} // namespace

void prepareProcess()
{
    // A descriptor that a launcher left closed would else be taken by the next file that is opened.
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (isClosed(descriptor)) {
            open("/dev/null", O_RDWR);
        }
    }
    if (isAtEnd(STDIN_FILENO)) {
        giveIdleStandardInput();
    }
    // The few threads seldom allocate at the same time, and a heap of its own for each would grow page by
    // page.
    mallopt(M_ARENA_MAX, 1);
    std::signal(SIGPIPE, SIG_IGN);
    const rlimit noCoreFile{0, 0};
    setrlimit(RLIMIT_CORE, &noCoreFile);
}

} // namespace tessary::desktop
