#pragma once

#include "upload/ToolReport.h"
#include "upload/UploadForm.h"
#include "upload/UploadState.h"

#include <QString>

#include <memory>

namespace tessary {

struct UploadTask;

/// Where an upload is heard: the screen that started it. All calls come on the main thread.
class UploadListener
{
public:
    UploadListener() = default;
    virtual ~UploadListener() = default;
    Q_DISABLE_COPY_MOVE(UploadListener)

    /// Tells this screen from every other of this run, also from one that is gone; never 0.
    [[nodiscard]] quint64 number() const { return m_number; }

    /// The upload that was started last; null before the first.
    [[nodiscard]] virtual const std::shared_ptr<UploadTask>& currentUploadTask() const = 0;

    /// Shows the state, and prints what failed.
    /// @param description of what failed, with UploadState::Failed only
    virtual void enter(UploadState state, const QString& description = {}) = 0;

    virtual void processOutput(const QString& text) = 0;

    /// A transfer tool ended with another status than 0; said after the state has become Failed.
    virtual void takeToolReport(const ToolReport& report) = 0;

    /// Nothing new, but the log's observers are to be told.
    virtual void refreshLogs() = 0;

    /// Says for a moment, over the whole screen, that the upload is complete.
    virtual void showSuccess() = 0;

    /// The form as it is now.
    [[nodiscard]] virtual const UploadForm& form() const = 0;

private:
    static inline quint64 s_count{};
    quint64 m_number = ++s_count;
};

} // namespace tessary
