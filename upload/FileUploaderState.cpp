#include "upload/FileUploaderState.h"

#include "service/Diagnostics.h"
#include "upload/UploadTask.h"
#include "upload/UploadWorkflow.h"

#include <QTimer>

namespace tessary {

FileUploaderState::FileUploaderState(UploadDependencies dependencies)
    : m_dependencies(std::move(dependencies)), m_statusMessage(statusMessageOf(UploadState::Ready))
{
}

FileUploaderState::~FileUploaderState() = default;

void FileUploaderState::setSelectedFile(const QUrl& file)
{
    m_form.selectedFile = file;
    Q_EMIT selectedFileChanged();
    Q_EMIT inputsReadyChanged();
}

void FileUploaderState::setSelectedFileLeft(const QUrl& file)
{
    m_form.selectedFileLeft = file;
    Q_EMIT selectedFileLeftChanged();
    Q_EMIT inputsReadyChanged();
}

void FileUploaderState::setSelectedFileRight(const QUrl& file)
{
    m_form.selectedFileRight = file;
    Q_EMIT selectedFileRightChanged();
    Q_EMIT inputsReadyChanged();
}

void FileUploaderState::setVideoName(const QString& name)
{
    m_form.videoName = name;
    Q_EMIT videoNameChanged();
    Q_EMIT inputsReadyChanged();
}

void FileUploaderState::setSelectedPerspective(const QString& perspective)
{
    m_form.selectedPerspective = perspective;
    Q_EMIT selectedPerspectiveChanged();
}

void FileUploaderState::selectFormat(const QString& name)
{
    m_form.selectedFileFormat = name;
    Q_EMIT selectedFileFormatChanged();
    if (takesTwoFiles()) {
        setSelectedFile({});
    } else {
        setSelectedFileLeft({});
        setSelectedFileRight({});
    }
    if (!offersPerspective()) {
        setSelectedPerspective(VideoFormat::immersivePerspective());
    }
}

void FileUploaderState::setStatusMessage(const QString& message)
{
    m_statusMessage = message;
    Q_EMIT statusMessageChanged();
}

void FileUploaderState::setIsUploading(bool uploading)
{
    m_isUploading = uploading;
    Q_EMIT isUploadingChanged();
    Q_EMIT progressInWordsChanged();
}

void FileUploaderState::setFailureReport(std::unique_ptr<FailureReport> report)
{
    if (report == nullptr && m_failureReport == nullptr) {
        return;
    }
    const std::unique_ptr<FailureReport> before = std::exchange(m_failureReport, std::move(report));
    Q_EMIT failureReportChanged();
}

QString FileUploaderState::progressInWords() const
{
    return m_isUploading && m_currentUploadTask ? m_currentUploadTask->progress.inWords() : QString();
}

QString FileUploaderState::progressInBrief() const
{
    return m_isUploading && m_currentUploadTask ? m_currentUploadTask->progress.inBrief() : QString();
}

void FileUploaderState::setShowSuccessAnimation(bool show)
{
    m_showSuccessAnimation = show;
    Q_EMIT showSuccessAnimationChanged();
}

void FileUploaderState::startUpload()
{
    if (!inputsReady()) {
        enter(takesTwoFiles() ? UploadState::FilesOrNameMissing : UploadState::FileOrNameMissing);
        return;
    }
    enter(UploadState::Requesting);
    m_log.clear();
    Q_EMIT logsChanged();
    Q_EMIT progressChanged();
    setFailureReport(nullptr);
    m_currentUploadTask = std::make_shared<UploadTask>(m_form.files());
    connect(&m_currentUploadTask->progress, &TransferProgress::changed, this,
            &FileUploaderState::progressInWordsChanged);
    Q_EMIT progressInWordsChanged(); // the last upload's words are gone
    startUploadTask(shared_from_this(), m_currentUploadTask, m_form.files(), m_dependencies);
}

void FileUploaderState::cancelUpload()
{
    if (m_currentUploadTask) {
        m_currentUploadTask->stop.request_stop();
    }
    enter(UploadState::Cancelled);
}

void FileUploaderState::enter(UploadState state, const QString& description)
{
    m_uploadState = state;
    if (const std::optional<bool> uploading = isUploadingIn(state)) {
        setIsUploading(*uploading);
    }
    if (state == UploadState::Failed) {
        printLine(description);
    }
    setStatusMessage(statusMessageOf(state, description));
}

void FileUploaderState::processOutput(const QString& text)
{
    switch (m_log.processOutput(text)) {
    case TransferLog::Effect::Ignored:
        break;
    case TransferLog::Effect::LoggedWithProgress:
        Q_EMIT logsChanged();
        Q_EMIT progressChanged();
        break;
    case TransferLog::Effect::Logged:
        Q_EMIT logsChanged();
        break;
    }
}

void FileUploaderState::takeToolReport(const ToolReport& report)
{
    setFailureReport(std::make_unique<FailureReport>(report));
}

void FileUploaderState::refreshLogs()
{
    Q_EMIT logsChanged();
}

void FileUploaderState::showSuccess()
{
    setShowSuccessAnimation(true);
    QTimer::singleShot(successAnimationTime, Qt::PreciseTimer, this,
                       [this] { setShowSuccessAnimation(false); });
}

void FileUploaderState::setIsHeaderHovered(bool hovered)
{
    m_isHeaderHovered = hovered;
    Q_EMIT isHeaderHoveredChanged();
}

void FileUploaderState::setShowDetails(bool show)
{
    m_showDetails = show;
    Q_EMIT showDetailsChanged();
}

void FileUploaderState::setHovered(const QString& formatName, bool hovered)
{
    m_hoverStates.insert(formatName, hovered);
    Q_EMIT hoverStatesChanged();
}

} // namespace tessary
