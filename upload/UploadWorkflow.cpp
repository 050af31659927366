#include "upload/UploadWorkflow.h"

#include "service/Diagnostics.h"
#include "upload/Completions.h"
#include "upload/FileName.h"
#include "upload/TransferTool.h"
#include "upload/UploadActivity.h"
#include "upload/UploadTask.h"

#include <QCoro/QCoroFuture>
#include <QCoro/QCoroTask>

#include <functional>
#include <variant>

namespace tessary {
namespace {

/// One upload under way, shared by its tasks.
struct Upload
{
    std::shared_ptr<UploadListener> screen;
    std::shared_ptr<UploadTask> task;
    QList<QUrl> files;
    QString videoName; ///< as it was at the start
    UploadDependencies dependencies;
    std::shared_ptr<const void> underWay;

    [[nodiscard]] bool isCancelled() const { return task->stop.stop_requested(); }

    /// The screen, while this upload may be heard on it. One that was cancelled and followed by a new one may
    /// not: its tool talks on for seconds, and none of that belongs to the new upload.
    [[nodiscard]] UploadListener* listener() const
    {
        return isCancelled() && screen->currentUploadTask() != task ? nullptr : screen.get();
    }
};

using UploadRef = std::shared_ptr<const Upload>;
using UrlOutcome = std::variant<QString, Error>;

/// The end of an upload by its cancellation, which is no error.
struct Cancellation
{
};

QString requireApiKey(const UploadDependencies& dependencies)
{
    const std::optional<QString> apiKey = dependencies.apiKey();
    if (!apiKey) {
        throw Error(QStringLiteral("tessary_macos_uploader.SessionManager"), 0,
                    QStringLiteral("You have been signed out. Sign in and upload again."));
    }
    return *apiKey;
}

QCoro::Task<> requestUrl(UploadRef upload, QString fileName, std::stop_token stop,
                         std::shared_ptr<Completions<UrlOutcome>> completions)
{
    std::optional<UrlOutcome> outcome;
    try {
        const QString apiKey = requireApiKey(upload->dependencies);
        const SASUrlResponse answer =
            co_await upload->dependencies.apiService.requestUploadURL(apiKey, fileName, stop);
        outcome = answer.sasUrl;
    } catch (const std::exception&) {
        outcome = caughtError();
    }
    completions->deliver(*outcome);
}

/// One upload URL per file, in the order in which they come in. Throws the first failure, after all other
/// requests have been cancelled and have ended.
QCoro::Task<QStringList> requestUrls(UploadRef upload)
{
    std::stop_source requests;
    const std::stop_callback<std::function<void()>> link(upload->task->stop.get_token(),
                                                         [requests]() mutable { requests.request_stop(); });
    const auto count = static_cast<std::size_t>(upload->files.size());
    const auto completions = std::make_shared<Completions<UrlOutcome>>(count);
    for (const QUrl& file : upload->files) {
        requestUrl(upload, fileName(file), requests.get_token(), completions);
    }
    QStringList urls;
    std::optional<Error> failure;
    bool cancelled = false;
    for (std::size_t i = 0; i < count; ++i) {
        const QFuture<UrlOutcome> next = completions->next();
        const UrlOutcome outcome = co_await next;
        if (failure || cancelled) {
            continue;
        }
        if (const Error* error = std::get_if<Error>(&outcome)) {
            failure = *error;
            requests.request_stop();
        } else {
            urls.append(std::get<QString>(outcome));
            cancelled = upload->isCancelled();
        }
    }
    if (failure) {
        throw Error(*failure);
    }
    if (cancelled) {
        throw Cancellation();
    }
    co_return urls;
}

/// The end of an upload by a transfer that failed.
struct TransferFailure
{
    TransferOutcome outcome;
};

/// @param index of the file among those of the upload
QCoro::Task<> transferFile(UploadRef upload, std::size_t index, QString url,
                           std::shared_ptr<Completions<TransferOutcome>> completions)
{
    TransferListener listener;
    listener.output = [upload, index](const QString& text) {
        upload->task->progress.hear(index, text);
        if (UploadListener* screen = upload->listener()) {
            screen->processOutput(text);
        }
    };
    listener.refresh = [upload] {
        if (UploadListener* screen = upload->listener()) {
            screen->refreshLogs();
        }
    };
    const QUrl file = upload->files.at(static_cast<qsizetype>(index));
    const QFuture<TransferOutcome> transfer =
        uploadFile(file, url, upload->dependencies.resourcesFolder, listener, upload->task->stop.get_token(),
                   *upload->dependencies.activity);
    const TransferOutcome outcome = co_await transfer;
    completions->deliver(outcome);
}

/// Runs all transfers at the same time and waits for all. Throws the first in time that did not succeed.
QCoro::Task<> transferFiles(UploadRef upload, QStringList urls)
{
    const auto count = static_cast<std::size_t>(qMin(upload->files.size(), urls.size()));
    const auto completions = std::make_shared<Completions<TransferOutcome>>(count);
    for (std::size_t i = 0; i < count; ++i) {
        transferFile(upload, i, urls.at(static_cast<qsizetype>(i)), completions);
    }
    std::optional<TransferOutcome> first;
    for (std::size_t i = 0; i < count; ++i) {
        const QFuture<TransferOutcome> next = completions->next();
        const TransferOutcome outcome = co_await next;
        if (!first && !outcome.succeeded()) {
            first = outcome;
        }
    }
    if (first && first->failure) {
        throw TransferFailure{*first};
    }
    if (first) {
        throw Cancellation();
    }
}

/// Puts the uploaded video into the library, with the form as it is now. Reports to the log only.
/// @param underWay counts the registration until the coroutine ends
QCoro::Task<> registerVideo(std::shared_ptr<UploadListener> screen, UploadDependencies dependencies,
                            QStringList blobs, [[maybe_unused]] std::shared_ptr<const void> underWay)
{
    QString report;
    UploadEnd end{UploadEnd::Kind::Registered, screen->form().videoName, {}, screen->number()};
    try {
        const QString apiKey = requireApiKey(dependencies);
        const VideoRegistration registration = screen->form().registration(blobs);
        const LibraryEntry video = co_await dependencies.apiService.submitLibraryData(apiKey, registration);
        // Not QString::arg(): the name may hold a place marker.
        report = QLatin1StringView("Video uploaded. Library ID: ") + QString::number(video.id) +
                 QLatin1StringView(", Name: ") + video.videoName + u'\n';
    } catch (const std::exception&) {
        end.kind = UploadEnd::Kind::RegistrationFailed;
        end.description = caughtError().description();
        report = QLatin1StringView("API Error: ") + end.description + u'\n';
    }
    screen->processOutput(report);
    dependencies.activity->announceEnd(end);
}

void reportStartOfTransfers(const Upload& upload)
{
    if (UploadListener* screen = upload.listener()) {
        screen->processOutput(QStringLiteral("Received Upload Sessions\n"));
        screen->enter(UploadState::Uploading);
    }
}

void reportSuccess(const Upload& upload, const QStringList& urls)
{
    UploadListener* screen = upload.listener();
    if (screen == nullptr) {
        return;
    }
    screen->enter(UploadState::Completed);
    screen->showSuccess();

    QStringList blobs;
    for (const QString& url : urls) {
        blobs.append(url.section(u'?', 0, 0));
    }
    UploadActivity* activity = upload.dependencies.activity;
    activity->runLater(
        [screen = upload.screen, dependencies = upload.dependencies, blobs,
         underWay = activity->beginRegistration()] { registerVideo(screen, dependencies, blobs, underWay); });
}

void reportFailure(const Upload& upload, const QString& description)
{
    if (UploadListener* screen = upload.listener()) {
        screen->enter(UploadState::Failed, description);
        screen->processOutput(QLatin1StringView("Upload Error: ") + description);
        if (!upload.isCancelled()) {
            upload.dependencies.activity->announceEnd(
                {UploadEnd::Kind::UploadFailed, upload.videoName, description, screen->number()});
        }
    } else {
        printLine(description);
    }
}

void reportCancellation(const Upload& upload)
{
    if (UploadListener* screen = upload.listener()) {
        screen->enter(UploadState::Cancelled);
        screen->processOutput(QStringLiteral("Upload canceled by user"));
    }
}

QCoro::Task<> runUpload(UploadRef upload)
{
    try {
        const QStringList urls = co_await requestUrls(upload);
        reportStartOfTransfers(*upload);
        co_await transferFiles(upload, urls);
        reportSuccess(*upload, urls);
    } catch (const Cancellation&) {
        reportCancellation(*upload);
    } catch (const TransferFailure& failure) {
        reportFailure(*upload, failure.outcome.failure->description());
        if (UploadListener* screen = upload->listener(); screen != nullptr && failure.outcome.report) {
            screen->takeToolReport(*failure.outcome.report);
        }
    } catch (const std::exception&) {
        reportFailure(*upload, caughtError().description());
    }
}

} // namespace

void startUploadTask(std::shared_ptr<UploadListener> screen, std::shared_ptr<UploadTask> task,
                     QList<QUrl> files, UploadDependencies dependencies)
{
    UploadActivity* activity = dependencies.activity;
    auto underWay = activity->beginUpload(task);
    const QString videoName = screen->form().videoName;
    const auto upload =
        std::make_shared<const Upload>(Upload{std::move(screen), std::move(task), std::move(files), videoName,
                                              std::move(dependencies), std::move(underWay)});
    activity->runLater([upload] { runUpload(upload); });
}

} // namespace tessary
