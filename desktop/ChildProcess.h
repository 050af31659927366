#pragma once

class QProcess;

namespace tessary::desktop {

/// Ends the process, which has not been started yet, by SIGKILL when this program ends in any way (prctl(2),
/// PR_SET_PDEATHSIG). Called on the main thread, which has to start the process, too.
void endWithThisProgram(QProcess& process);

} // namespace tessary::desktop
