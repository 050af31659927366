#pragma once

#include "service/Error.h"
#include "upload/ToolReport.h"

#include <QFuture>
#include <QString>
#include <QUrl>

#include <chrono>
#include <functional>
#include <optional>
#include <stop_token>

namespace tessary {

class UploadActivity;

/// How one transfer ended. A cancellation is no failure and has no words of its own.
struct TransferOutcome
{
    bool cancelled = false;
    std::optional<Error> failure = {};
    std::optional<ToolReport> report = {}; ///< of a tool that ended with another status than 0

    [[nodiscard]] bool succeeded() const { return !cancelled && !failure; }
};

/// How often the log's observers are told while a tool runs.
inline constexpr std::chrono::milliseconds refreshInterval{50};

/// Where a running transfer is heard. Both are called on the main thread.
struct TransferListener
{
    /// One chunk as read; those of standard error carry "ERROR: " in front.
    std::function<void(const QString&)> output;
    std::function<void()> refresh; ///< every refreshInterval while the tool runs
};

/// The folder beside the executable that holds the transfer tool.
[[nodiscard]] QString standardResourcesFolder();

/// Copies one local file to an upload URL with the tool "azcopy" of the resources folder, as a child process
/// that inherits standard input, environment and working directory. The future is fulfilled exactly once.
/// Ends without failure when the tool exits with 0; with a failure in the domain
/// "AzCopy" when the tool is missing or exits otherwise (code: the status, or the number of the signal that
/// ended it); with the platform's launch error when it cannot be started. A stop ends the tool with SIGTERM
/// within 200 ms, also one that came before the launch; a tool that then exits with another status than 0
/// ends as cancelled. When the activity says so, the tool is killed. The process and its pipes
/// are gone, and its timers stopped, when the future is fulfilled.
[[nodiscard]] QFuture<TransferOutcome> uploadFile(const QUrl& fileURL, const QString& sasUrl,
                                                  const QString& resourcesFolder, TransferListener listener,
                                                  const std::stop_token& stop, UploadActivity& activity);

} // namespace tessary
