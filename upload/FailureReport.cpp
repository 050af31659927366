#include "upload/FailureReport.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace tessary {

FailureReport::FailureReport(ToolReport tool)
    : m_tool(std::move(tool)), m_reason(explainFailure({}, m_tool.lastWords))
{
    const QFileInfo log(m_tool.logFile);
    // Only a plain file: opening anything else could wait for ever.
    if (!log.isFile() || !log.isReadable()) {
        m_tool.logFile.clear();
        return;
    }
    QMetaObject::invokeMethod(this, &FailureReport::readLog, Qt::QueuedConnection);
}

QUrl FailureReport::logFile() const
{
    return hasLogFile() ? QUrl::fromLocalFile(m_tool.logFile) : QUrl();
}

void FailureReport::readLog()
{
    QFile log(m_tool.logFile);
    if (log.open(QIODevice::ReadOnly)) {
        log.seek(std::max<qint64>(0, log.size() - maxTail));
        m_reason = explainFailure(log.readAll(), m_tool.lastWords);
    }
    Q_EMIT changed();
}

} // namespace tessary
