#include "upload/ToolReport.h"

#include "upload/TransferLog.h"

namespace tessary {

void ToolReport::hear(const QString& output)
{
    if (const QString path = readLogFilePath(output); !path.isEmpty()) {
        logFile = path;
    }
    lastWords += output.right(maxLastWords);
    lastWords.remove(0, lastWords.size() - maxLastWords);
}

} // namespace tessary
