#pragma once

#include "service/APIService.h"
#include "upload/TransferLog.h"

#include <QObject>
#include <QStringList>
#include <QUrl>
#include <QVariantMap>

#include <memory>
#include <stop_token>

namespace tessary {

class SessionManager;
class UploadActivity;

/// What a screen's uploads need from outside it. The pointers are to objects that outlive every upload.
struct UploadSurroundings
{
    SessionManager* sessionManager;
    UploadActivity* activity;
    APIService apiService;
    QString resourcesFolder; ///< where the transfer tool lies
};

/// A handle of one upload. Cancelling it reaches its requests and its transfers, not its registration.
struct UploadTask
{
    std::stop_source stop;
};

/// The state of one uploader screen: what its pickers and its form hold, and what its uploads say. Owned by a
/// std::shared_ptr: the screen holds one reference and each upload another, so an upload outlives its screen.
/// Main thread only. Every assignment is announced, also one that changes nothing.
class FileUploaderState : public QObject, public std::enable_shared_from_this<FileUploaderState>
{
    Q_OBJECT
    /// The files; an empty URL is none.
    Q_PROPERTY(QUrl selectedFile READ selectedFile WRITE setSelectedFile NOTIFY selectedFileChanged)
    Q_PROPERTY(
        QUrl selectedFileLeft READ selectedFileLeft WRITE setSelectedFileLeft NOTIFY selectedFileLeftChanged)
    Q_PROPERTY(QUrl selectedFileRight READ selectedFileRight WRITE setSelectedFileRight NOTIFY
                   selectedFileRightChanged)
    Q_PROPERTY(QString statusMessage READ statusMessage WRITE setStatusMessage NOTIFY statusMessageChanged)
    Q_PROPERTY(bool isUploading READ isUploading NOTIFY isUploadingChanged)
    Q_PROPERTY(QString logs READ logs NOTIFY logsChanged)
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)
    Q_PROPERTY(bool showSuccessAnimation READ showSuccessAnimation NOTIFY showSuccessAnimationChanged)
    Q_PROPERTY(
        bool isHeaderHovered READ isHeaderHovered WRITE setIsHeaderHovered NOTIFY isHeaderHoveredChanged)
    Q_PROPERTY(bool showDetails READ showDetails WRITE setShowDetails NOTIFY showDetailsChanged)
    Q_PROPERTY(QString videoName READ videoName WRITE setVideoName NOTIFY videoNameChanged)
    Q_PROPERTY(QString selectedFileFormat READ selectedFileFormat NOTIFY selectedFileFormatChanged)
    Q_PROPERTY(QString selectedPerspective READ selectedPerspective WRITE setSelectedPerspective NOTIFY
                   selectedPerspectiveChanged)
    /// Format name to whether the pointer is over its option.
    Q_PROPERTY(QVariantMap hoverStates READ hoverStates NOTIFY hoverStatesChanged)

    /// What follows from the state above.
    Q_PROPERTY(QStringList formats READ formats CONSTANT)
    Q_PROPERTY(QStringList perspectives READ perspectives CONSTANT)
    Q_PROPERTY(bool takesTwoFiles READ takesTwoFiles NOTIFY selectedFileFormatChanged)
    Q_PROPERTY(bool offersPerspective READ offersPerspective NOTIFY selectedFileFormatChanged)
    Q_PROPERTY(bool inputsReady READ inputsReady NOTIFY inputsReadyChanged)

public:
    explicit FileUploaderState(UploadSurroundings surroundings);

    [[nodiscard]] QUrl selectedFile() const { return m_selectedFile; }

    [[nodiscard]] QUrl selectedFileLeft() const { return m_selectedFileLeft; }

    [[nodiscard]] QUrl selectedFileRight() const { return m_selectedFileRight; }

    [[nodiscard]] QString statusMessage() const { return m_statusMessage; }

    [[nodiscard]] bool isUploading() const { return m_isUploading; }

    [[nodiscard]] QString logs() const { return m_log.logs(); }

    [[nodiscard]] double progress() const { return m_log.progress(); }

    [[nodiscard]] bool showSuccessAnimation() const { return m_showSuccessAnimation; }

    [[nodiscard]] bool isHeaderHovered() const { return m_isHeaderHovered; }

    [[nodiscard]] bool showDetails() const { return m_showDetails; }

    [[nodiscard]] QString videoName() const { return m_videoName; }

    [[nodiscard]] QString selectedFileFormat() const { return m_selectedFileFormat; }

    [[nodiscard]] QString selectedPerspective() const { return m_selectedPerspective; }

    [[nodiscard]] QVariantMap hoverStates() const { return m_hoverStates; }

    [[nodiscard]] const std::shared_ptr<UploadTask>& currentUploadTask() const { return m_currentUploadTask; }

    [[nodiscard]] const UploadSurroundings& surroundings() const { return m_surroundings; }

    [[nodiscard]] static QStringList formats();
    [[nodiscard]] static QStringList perspectives();
    [[nodiscard]] bool takesTwoFiles() const;
    [[nodiscard]] bool offersPerspective() const;

    /// The format's files are chosen and the name has a character, be it a space.
    [[nodiscard]] bool inputsReady() const;

    void setSelectedFile(const QUrl& file);
    void setSelectedFileLeft(const QUrl& file);
    void setSelectedFileRight(const QUrl& file);
    void setStatusMessage(const QString& message);
    void setIsUploading(bool uploading);
    void setShowSuccessAnimation(bool show);
    void setIsHeaderHovered(bool hovered);
    void setShowDetails(bool show);
    void setVideoName(const QString& name);
    void setSelectedPerspective(const QString& perspective);

    /// Takes the format, clears the files that it does not use, and fixes the perspective of the immersive
    /// format.
    Q_INVOKABLE void selectFormat(const QString& name);
    Q_INVOKABLE void setHovered(const QString& formatName, bool hovered);

    /// Checks the inputs and starts an upload of them; says on the status line what is missing. Returns at
    /// once.
    Q_INVOKABLE void startUpload();

    /// Cancels the current upload, if there is one; the screen is ready for the next at once.
    Q_INVOKABLE void cancelUpload();

    /// The success overlay came up: shows it, and hides it 2.0 s later, whatever else hides it meanwhile.
    Q_INVOKABLE void successOverlayAppeared();

    /// The success overlay's end, 2.0 s from now.
    void hideSuccessAnimationLater();

    /// The one entry to the log.
    void processOutput(const QString& text);

    /// Announces the log once more, as if it had been assigned to itself.
    void refreshLogs();

Q_SIGNALS:
    void selectedFileChanged();
    void selectedFileLeftChanged();
    void selectedFileRightChanged();
    void statusMessageChanged();
    void isUploadingChanged();
    void logsChanged();
    void progressChanged();
    void showSuccessAnimationChanged();
    void isHeaderHoveredChanged();
    void showDetailsChanged();
    void videoNameChanged();
    void selectedFileFormatChanged();
    void selectedPerspectiveChanged();
    void hoverStatesChanged();
    void inputsReadyChanged();

private:
    [[nodiscard]] QList<QUrl> chosenFiles() const;

    UploadSurroundings m_surroundings;
    QUrl m_selectedFile;
    QUrl m_selectedFileLeft;
    QUrl m_selectedFileRight;
    QString m_statusMessage;
    bool m_isUploading = false;
    TransferLog m_log;
    bool m_showSuccessAnimation = false;
    bool m_isHeaderHovered = false;
    bool m_showDetails = true;
    QString m_videoName;
    QString m_selectedFileFormat;
    QString m_selectedPerspective;
    QVariantMap m_hoverStates;
    std::shared_ptr<UploadTask> m_currentUploadTask;
};

} // namespace tessary
