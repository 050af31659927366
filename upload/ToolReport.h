#pragma once

#include <QString>

namespace tessary {

/// What a transfer tool that failed says of it. A plain value.
struct ToolReport
{
    /// The most characters of the tool's last words that are kept: its reason, and the summary after it.
    static constexpr int maxLastWords = 8000;

    QString logFile;   ///< the path of its log; empty when it told none
    QString lastWords; ///< the end of what it wrote

    /// Takes one chunk of its output.
    void hear(const QString& output);
};

} // namespace tessary
