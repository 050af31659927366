#include "service/APIService.h"

#include "service/Error.h"
#include "service/HttpCall.h"
#include "service/MultipartForm.h"
#include "service/VideoFormat.h"

#include <QCoro/QCoroFuture>
#include <QUrl>

#include <algorithm>

namespace tessary {
namespace {

QByteArray headerValue(const QString& apiKey)
{
    QByteArray value = apiKey.toUtf8();
    if (std::any_of(value.cbegin(), value.cend(),
                    [](char c) { return c == '\r' || c == '\n' || c == '\0'; })) {
        throw Error(QStringLiteral("QNetworkRequest"), 0,
                    QStringLiteral("The API key holds a line break or a null character and cannot be sent."));
    }
    // A null value would take the header away, and an empty key is sent like any other.
    return value.isNull() ? QByteArray("") : value;
}

QNetworkRequest makeRequest(const QString& baseUrl, const QString& path, const QString& apiKey)
{
    const QUrl url(baseUrl + path, QUrl::StrictMode);
    if (!url.isValid()) {
        throw toError(APIServiceError::invalidURL);
    }
    QNetworkRequest request(url);
    request.setRawHeader("X-TESSARY-APPKEY", headerValue(apiKey));
    return request;
}

void announceForm(QNetworkRequest& request, const QByteArray& boundary)
{
    request.setRawHeader("Content-Type", "multipart/form-data; boundary=" + boundary);
}

/// The answer's body; throws when there is none.
QByteArray bodyOf(const HttpOutcome& outcome)
{
    if (outcome.failure) {
        throw Error(*outcome.failure);
    }
    return outcome.body;
}

} // namespace

QString standardBaseUrl()
{
    return QStringLiteral(TESSARY_API_ROOT);
}

APIService::APIService(QString baseUrl, std::chrono::milliseconds timeout)
    : BASE_URL(std::move(baseUrl)), m_timeout(timeout)
{
}

QCoro::Task<std::optional<Workspace>> APIService::pullStartupInformation(QString apiKey) const
{
    const QNetworkRequest request =
        makeRequest(BASE_URL, QStringLiteral("/upload-app/pull-startup-information"), apiKey);
    const QFuture<HttpOutcome> answer = sendHttp(request, std::nullopt, m_timeout, {});
    const HttpOutcome outcome = co_await answer;
    co_return Workspace::fromAnswer(bodyOf(outcome));
}

QCoro::Task<SASUrlResponse> APIService::requestUploadURL(QString apiKey, QString uniqueFileName,
                                                         std::stop_token stop) const
{
    QNetworkRequest request =
        makeRequest(BASE_URL, QStringLiteral("/upload-app/direct-file-upload-sas"), apiKey);
    const QByteArray boundary = makeBoundary();
    announceForm(request, boundary);
    QByteArray body;
    appendFormField(QStringLiteral("uniqueFileName"), uniqueFileName, body, boundary);
    appendClosingLine(body, boundary);

    const QFuture<HttpOutcome> answer = sendHttp(request, body, m_timeout, stop);
    const HttpOutcome outcome = co_await answer;
    co_return SASUrlResponse::fromAnswer(bodyOf(outcome));
}

QCoro::Task<LibraryEntry> APIService::submitLibraryData(QString apiKey, VideoRegistration video) const
{
    QNetworkRequest request =
        makeRequest(BASE_URL, QStringLiteral("/upload-app/submit-library-data"), apiKey);
    const QByteArray boundary = makeBoundary();
    announceForm(request, boundary);
    const QString formatCode = VideoFormat::fileFormatCode(video.fileFormat);

    QByteArray body;
    appendFormField(QStringLiteral("uploadedUrl"), video.uploadedUrl, body, boundary);
    if (video.uploadedUrlRight) {
        appendFormField(QStringLiteral("uploadedUrlRight"), *video.uploadedUrlRight, body, boundary);
    }
    appendFormField(QStringLiteral("fileFormat3D"), formatCode, body, boundary);
    appendFormField(QStringLiteral("is3D"), video.is3D ? QStringLiteral("true") : QStringLiteral("false"),
                    body, boundary);
    appendFormField(QStringLiteral("perspective"), QString::number(video.perspective), body, boundary);
    appendFormField(QStringLiteral("videoName"), video.videoName, body, boundary);
    appendClosingLine(body, boundary);

    const QFuture<HttpOutcome> answer = sendHttp(request, body, m_timeout, {});
    const HttpOutcome outcome = co_await answer;
    co_return LibraryEntry::fromAnswer(bodyOf(outcome), formatCode);
}

} // namespace tessary
