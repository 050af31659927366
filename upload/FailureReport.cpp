#include "upload/FailureReport.h"

#include <QFileInfo>

#include <algorithm>

namespace tessary {

FailureReport::FailureReport(ToolReport tool)
    : m_tool(std::move(tool)), m_file(m_tool.logFile), m_reason(explainFailure({}, m_tool.lastWords))
{
    // Only a plain file: opening anything else could wait for ever.
    if (!QFileInfo(m_tool.logFile).isFile() || !m_file.open(QIODevice::ReadOnly)) {
        m_tool.logFile.clear();
        return;
    }
    m_file.seek(std::max<qint64>(0, m_file.size() - maxTail));
    connect(&m_reading, &QTimer::timeout, this, &FailureReport::readOn);
    m_reading.start(0);
}

QUrl FailureReport::logFile() const
{
    return hasLogFile() ? QUrl::fromLocalFile(m_tool.logFile) : QUrl();
}

void FailureReport::readOn()
{
    const QByteArray piece = m_file.read(std::min(readSize, maxTail - m_tail.size()));
    m_tail += piece;
    if (!piece.isEmpty() && m_tail.size() < maxTail) {
        return;
    }
    m_reading.stop();
    m_file.close();
    m_reason = explainFailure(m_tail, m_tool.lastWords);
    m_tail.clear();
    Q_EMIT changed();
}

} // namespace tessary
