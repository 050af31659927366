#include "upload/FileUploaderState.h"

#include "service/VideoFormat.h"
#include "upload/UploadWorkflow.h"

#include <QTimer>

#include <algorithm>
#include <chrono>

namespace tessary {
namespace {

constexpr std::chrono::seconds successAnimationTime{2};
const QString readyMessage = QStringLiteral("Ready to upload");

} // namespace

FileUploaderState::FileUploaderState(UploadSurroundings surroundings)
    : m_surroundings(std::move(surroundings)),
      m_statusMessage(readyMessage),
      m_selectedFileFormat(VideoFormat::defaultName()),
      m_selectedPerspective(VideoFormat::defaultPerspective())
{
}

QStringList FileUploaderState::formats()
{
    return VideoFormat::names();
}

QStringList FileUploaderState::perspectives()
{
    return VideoFormat::perspectives();
}

bool FileUploaderState::takesTwoFiles() const
{
    return m_selectedFileFormat == VideoFormat::separate();
}

bool FileUploaderState::offersPerspective() const
{
    return m_selectedFileFormat != VideoFormat::immersive();
}

QList<QUrl> FileUploaderState::chosenFiles() const
{
    return takesTwoFiles() ? QList<QUrl>{m_selectedFileLeft, m_selectedFileRight}
                           : QList<QUrl>{m_selectedFile};
}

bool FileUploaderState::inputsReady() const
{
    const QList<QUrl> files = chosenFiles();
    return !m_videoName.isEmpty() && std::none_of(files.begin(), files.end(), std::mem_fn(&QUrl::isEmpty));
}

void FileUploaderState::setSelectedFile(const QUrl& file)
{
    m_selectedFile = file;
    Q_EMIT selectedFileChanged();
    Q_EMIT inputsReadyChanged();
}

void FileUploaderState::setSelectedFileLeft(const QUrl& file)
{
    m_selectedFileLeft = file;
    Q_EMIT selectedFileLeftChanged();
    Q_EMIT inputsReadyChanged();
}

void FileUploaderState::setSelectedFileRight(const QUrl& file)
{
    m_selectedFileRight = file;
    Q_EMIT selectedFileRightChanged();
    Q_EMIT inputsReadyChanged();
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
}

void FileUploaderState::setShowSuccessAnimation(bool show)
{
    m_showSuccessAnimation = show;
    Q_EMIT showSuccessAnimationChanged();
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

void FileUploaderState::setVideoName(const QString& name)
{
    m_videoName = name;
    Q_EMIT videoNameChanged();
    Q_EMIT inputsReadyChanged();
}

void FileUploaderState::setSelectedPerspective(const QString& perspective)
{
    m_selectedPerspective = perspective;
    Q_EMIT selectedPerspectiveChanged();
}

void FileUploaderState::selectFormat(const QString& name)
{
    m_selectedFileFormat = name;
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

void FileUploaderState::setHovered(const QString& formatName, bool hovered)
{
    m_hoverStates.insert(formatName, hovered);
    Q_EMIT hoverStatesChanged();
}

void FileUploaderState::startUpload()
{
    if (!inputsReady()) {
        setStatusMessage(takesTwoFiles() ? QStringLiteral("Select both files and enter a name.")
                                         : QStringLiteral("Select a file and enter a name."));
        return;
    }
    setIsUploading(true);
    setStatusMessage(QStringLiteral("Requesting upload URL..."));
    m_log.clear();
    Q_EMIT logsChanged();
    Q_EMIT progressChanged();
    m_currentUploadTask = std::make_shared<UploadTask>();
    startUploadTask(shared_from_this(), m_currentUploadTask, chosenFiles());
}

void FileUploaderState::cancelUpload()
{
    if (m_currentUploadTask) {
        m_currentUploadTask->stop.request_stop();
    }
    setIsUploading(false);
    setStatusMessage(QStringLiteral("Upload canceled"));
}

void FileUploaderState::successOverlayAppeared()
{
    setShowSuccessAnimation(true);
    hideSuccessAnimationLater();
}

void FileUploaderState::hideSuccessAnimationLater()
{
    QTimer::singleShot(successAnimationTime, this, [this] { setShowSuccessAnimation(false); });
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

void FileUploaderState::refreshLogs()
{
    Q_EMIT logsChanged();
}

} // namespace tessary
