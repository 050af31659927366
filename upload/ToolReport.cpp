#include "upload/ToolReport.h"

#include "upload/TransferLog.h"

namespace tessary {

void ToolReport::hear(const QString& output)
{
    if (const QString path = readLogFilePath(output); !path.isEmpty()) {
        logFile = path;
    }
    const QString all = lastWords + output.right(maxLastWords);
    lastWords = all.right(maxLastWords); // a copy, for the reason that TransferLog has
}

} // namespace tessary
