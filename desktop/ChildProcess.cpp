#include "desktop/ChildProcess.h"

#include <QProcess>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace tessary::desktop {

void endWithThisProgram(QProcess& process)
{
    process.setChildProcessModifier([parent = getpid()] {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent) { // the program was killed since the fork
            _exit(EXIT_FAILURE);
        }
    });
}

} // namespace tessary::desktop
