#pragma once

#include <QString>

#include <optional>

namespace tessary {

/// What the transfer tool tells of its progress, in one chunk of its output.
struct TransferReport
{
    double percentage;                 ///< 0 also when it cannot be read
    std::optional<QString> throughput; ///< in Mb/s, as the tool writes it
};

/// None when the text is chatter or tells no progress.
[[nodiscard]] std::optional<TransferReport> readTransferReport(const QString& text);

/// The file that the tool says it logs to; empty when the text does not tell.
[[nodiscard]] QString readLogFilePath(const QString& text);

/// The log of an upload and the progress that the transfer tool's reports add up to. A plain value.
class TransferLog
{
public:
    /// The most user-perceived characters that the log keeps.
    static constexpr int maxLogLength = 10000;

    /// What a text did to the log.
    enum class Effect { Ignored, Logged, LoggedWithProgress };

    [[nodiscard]] const QString& logs() const { return m_logs; }

    /// A fraction, 0 to 1 for what the tool sends; any number for what else reads as one.
    [[nodiscard]] double progress() const { return m_progress; }

    /// Empties the log and sets the progress to 0.
    void clear();

    /// Takes one text, whole: a chunk of the tool's output or a message of the workflow. Chatter is dropped,
    /// a progress report becomes a short entry, any other text is appended with a line break. Cannot fail.
    Effect processOutput(const QString& text);

private:
    void append(const QString& entry);

    QString m_logs;
    double m_progress = 0;
};

} // namespace tessary
