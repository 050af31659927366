#pragma once

#include <QStringView>

namespace tessary {

/// Writes one line to standard output, in UTF-8, and flushes it, so that a reader of a pipe sees it at once.
void printLine(QStringView text);

/// The same on standard error: for what went wrong on this machine rather than in an upload.
void warnLine(QStringView text);

} // namespace tessary
