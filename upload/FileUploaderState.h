#pragma once

#include "upload/FailureReport.h"
#include "upload/TransferLog.h"
#include "upload/UploadDependencies.h"
#include "upload/UploadForm.h"
#include "upload/UploadListener.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QVariantMap>

#include <chrono>
#include <memory>

namespace tessary {

/// The state of one uploader screen: what its form holds, how its upload goes, and what the pointer is over.
/// Owned by a std::shared_ptr: the screen holds one reference and each upload another, so an upload outlives
/// its screen. Main thread only. Every assignment is announced, also one that changes nothing.
class FileUploaderState : public QObject,
                          public UploadListener,
                          public std::enable_shared_from_this<FileUploaderState>
{
    Q_OBJECT
    // The form, and what follows from it. An empty URL is no file.
    Q_PROPERTY(QUrl selectedFile READ selectedFile WRITE setSelectedFile NOTIFY selectedFileChanged)
    Q_PROPERTY(
        QUrl selectedFileLeft READ selectedFileLeft WRITE setSelectedFileLeft NOTIFY selectedFileLeftChanged)
    Q_PROPERTY(QUrl selectedFileRight READ selectedFileRight WRITE setSelectedFileRight NOTIFY
                   selectedFileRightChanged)
    Q_PROPERTY(QString videoName READ videoName WRITE setVideoName NOTIFY videoNameChanged)
    Q_PROPERTY(QString selectedFileFormat READ selectedFileFormat NOTIFY selectedFileFormatChanged)
    Q_PROPERTY(QString selectedPerspective READ selectedPerspective WRITE setSelectedPerspective NOTIFY
                   selectedPerspectiveChanged)
    Q_PROPERTY(QStringList formats READ formats CONSTANT)
    Q_PROPERTY(QStringList perspectives READ perspectives CONSTANT)
    Q_PROPERTY(bool takesTwoFiles READ takesTwoFiles NOTIFY selectedFileFormatChanged)
    Q_PROPERTY(bool offersPerspective READ offersPerspective NOTIFY selectedFileFormatChanged)
    Q_PROPERTY(bool inputsReady READ inputsReady NOTIFY inputsReadyChanged)

    // The upload.
    Q_PROPERTY(QString statusMessage READ statusMessage WRITE setStatusMessage NOTIFY statusMessageChanged)
    Q_PROPERTY(bool isUploading READ isUploading NOTIFY isUploadingChanged)
    Q_PROPERTY(QString logs READ logs NOTIFY logsChanged)
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)
    Q_PROPERTY(QString progressInWords READ progressInWords NOTIFY progressInWordsChanged)
    Q_PROPERTY(QString progressInBrief READ progressInBrief NOTIFY progressInWordsChanged)
    Q_PROPERTY(tessary::FailureReport* failureReport READ failureReport NOTIFY failureReportChanged)
    Q_PROPERTY(bool showSuccessAnimation READ showSuccessAnimation NOTIFY showSuccessAnimationChanged)

    // What only the screen uses. The map goes from a format's name to whether the pointer is over its option.
    Q_PROPERTY(
        bool isHeaderHovered READ isHeaderHovered WRITE setIsHeaderHovered NOTIFY isHeaderHoveredChanged)
    Q_PROPERTY(bool showDetails READ showDetails WRITE setShowDetails NOTIFY showDetailsChanged)
    Q_PROPERTY(QVariantMap hoverStates READ hoverStates NOTIFY hoverStatesChanged)

public:
    /// How long the success overlay stays, from each time that something asks for its end.
    static constexpr std::chrono::seconds successAnimationTime{2};

    explicit FileUploaderState(UploadDependencies dependencies);
    ~FileUploaderState() override;
    Q_DISABLE_COPY_MOVE(FileUploaderState)

    QUrl selectedFile() const { return m_form.selectedFile; }

    QUrl selectedFileLeft() const { return m_form.selectedFileLeft; }

    QUrl selectedFileRight() const { return m_form.selectedFileRight; }

    QString videoName() const { return m_form.videoName; }

    QString selectedFileFormat() const { return m_form.selectedFileFormat; }

    QString selectedPerspective() const { return m_form.selectedPerspective; }

    static QStringList formats() { return VideoFormat::names(); }

    static QStringList perspectives() { return VideoFormat::perspectives(); }

    bool takesTwoFiles() const { return m_form.takesTwoFiles(); }

    bool offersPerspective() const { return m_form.offersPerspective(); }

    bool inputsReady() const { return m_form.isComplete(); }

    void setSelectedFile(const QUrl& file);
    void setSelectedFileLeft(const QUrl& file);
    void setSelectedFileRight(const QUrl& file);
    void setVideoName(const QString& name);
    void setSelectedPerspective(const QString& perspective);

    /// Takes the format, clears the files that it does not use, and fixes the perspective of the immersive
    /// format.
    Q_INVOKABLE void selectFormat(const QString& name);

    QString statusMessage() const { return m_statusMessage; }

    bool isUploading() const { return m_isUploading; }

    QString logs() const { return m_log.logs(); }

    double progress() const { return m_log.progress(); }

    /// How far the upload under way is and how long it will take; empty while that is not known.
    QString progressInWords() const;
    QString progressInBrief() const;

    /// Why the last upload failed; null unless a transfer tool failed.
    FailureReport* failureReport() const { return m_failureReport.get(); }

    bool showSuccessAnimation() const { return m_showSuccessAnimation; }

    UploadState uploadState() const { return m_uploadState; }

    const std::shared_ptr<UploadTask>& currentUploadTask() const override { return m_currentUploadTask; }

    void setStatusMessage(const QString& message);
    void setShowSuccessAnimation(bool show);

    /// Checks the inputs and starts an upload of them; says on the status line what is missing. Returns at
    /// once.
    Q_INVOKABLE void startUpload();

    /// Cancels the current upload, if there is one; the screen is ready for the next at once.
    Q_INVOKABLE void cancelUpload();

    /// Shows the success overlay, and hides it in time, whatever else hides it meanwhile. The overlay asks
    /// for it, too, when it comes up.
    Q_INVOKABLE void showSuccess() override;

    void enter(UploadState state, const QString& description = {}) override;
    void processOutput(const QString& text) override;
    void takeToolReport(const ToolReport& report) override;
    void refreshLogs() override;

    const UploadForm& form() const override { return m_form; }

    bool isHeaderHovered() const { return m_isHeaderHovered; }

    bool showDetails() const { return m_showDetails; }

    QVariantMap hoverStates() const { return m_hoverStates; }

    void setIsHeaderHovered(bool hovered);
    void setShowDetails(bool show);
    Q_INVOKABLE void setHovered(const QString& formatName, bool hovered);

Q_SIGNALS:
    void selectedFileChanged();
    void selectedFileLeftChanged();
    void selectedFileRightChanged();
    void videoNameChanged();
    void selectedFileFormatChanged();
    void selectedPerspectiveChanged();
    void inputsReadyChanged();
    void statusMessageChanged();
    void isUploadingChanged();
    void logsChanged();
    void progressChanged();
    void progressInWordsChanged();
    void failureReportChanged();
    void showSuccessAnimationChanged();
    void isHeaderHoveredChanged();
    void showDetailsChanged();
    void hoverStatesChanged();

private:
    void setIsUploading(bool uploading);
    void setFailureReport(std::unique_ptr<FailureReport> report);

    UploadForm m_form;

    UploadDependencies m_dependencies;
    UploadState m_uploadState = UploadState::Ready;
    QString m_statusMessage;
    bool m_isUploading = false;
    TransferLog m_log;
    std::unique_ptr<FailureReport> m_failureReport;
    bool m_showSuccessAnimation = false;
    std::shared_ptr<UploadTask> m_currentUploadTask;

    bool m_isHeaderHovered = false;
    bool m_showDetails = true;
    QVariantMap m_hoverStates;
};

} // namespace tessary
