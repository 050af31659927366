#pragma once

#include "upload/FailureReason.h"
#include "upload/ToolReport.h"

#include <QObject>
#include <QString>
#include <QUrl>

namespace tessary {

/// Why the last upload failed: reads the end of the tool's log, from the event loop. Main thread only.
class FailureReport : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString words READ words NOTIFY changed)
    Q_PROPERTY(QString line READ line NOTIFY changed)
    Q_PROPERTY(bool hasLogFile READ hasLogFile NOTIFY changed)
    Q_PROPERTY(QUrl logFile READ logFile NOTIFY changed)
    /// Whether the screen shows it, which people ask for.
    Q_PROPERTY(bool shown MEMBER m_shown NOTIFY shownChanged)

public:
    static constexpr qint64 maxTail = 256 * 1024; ///< bytes of the log that are read

    explicit FailureReport(ToolReport tool);

    [[nodiscard]] const QString& words() const { return m_reason.words; }

    [[nodiscard]] const QString& line() const { return m_reason.line; }

    [[nodiscard]] bool hasLogFile() const { return !m_tool.logFile.isEmpty(); }

    /// Empty when there is no such file.
    [[nodiscard]] QUrl logFile() const;

Q_SIGNALS:
    void changed();
    void shownChanged();

private:
    void readLog();

    ToolReport m_tool;
    FailureReason m_reason;
    bool m_shown = false;
};

} // namespace tessary
