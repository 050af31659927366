#pragma once

#include <QString>

namespace tessary {

/// Writes one line to standard output, in UTF-8, and flushes it, so that a reader of a pipe sees it at once.
void printLine(QStringView text);

/// Prints why an answer of the service could not be read.
void printDeserializingError(const QString& reason);

/// The same as printLine(), on standard error: for what went wrong on this machine rather than in an upload.
void warnLine(QStringView text);

} // namespace tessary
