#pragma once

namespace tessary::desktop {

/// Makes the process fit for the program and its tools. Called first in main(), before any Qt object.
///
/// A standard input that is at its end (launchers give /dev/null) is replaced by an idle pipe: the transfer
/// tool inherits it, and AzCopy burns a whole core on one that is at its end. A standard output that nobody
/// reads does not end the program. No core file is ever written, since it would hold the API key.
void prepareProcess();

} // namespace tessary::desktop
