#include "service/APIService.h"

#include "service/Diagnostics.h"
#include "service/Error.h"
#include "service/HttpCall.h"
#include "service/JsonReading.h"
#include "service/MultipartForm.h"
#include "service/VideoFormat.h"

#include <QCoro/QCoroFuture>
#include <QUrl>

#include <algorithm>

namespace tessary {
namespace {

/// The case name of NoWorkspaceDataError and LibraryDataError: what is printed for a missing or mistyped key.
const QString missingKey = QStringLiteral("noData");

void printDeserializingError(const QString& description)
{
    printLine(QStringLiteral("Error deserializing JSON: ") + description);
}

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

std::optional<Workspace> readWorkspace(const QByteArray& body)
{
    const JsonReading reading = readJson(body);
    if (!reading.document) {
        printDeserializingError(reading.problem);
        throw toError(APIServiceError::invalidURL);
    }
    if (!reading.document->isObject()) {
        return std::nullopt;
    }
    std::optional<Workspace> workspace = Workspace::fromStartupInformation(reading.document->object());
    if (!workspace) {
        printDeserializingError(missingKey);
        throw toError(APIServiceError::invalidURL);
    }
    return workspace;
}

LibraryEntry readLibraryEntry(const QByteArray& body, const QString& formatCode)
{
    const JsonReading reading = readJson(body);
    if (!reading.document) {
        printDeserializingError(reading.problem);
        throw toError(LibraryDataError::insertError);
    }
    if (!reading.document->isObject()) {
        printLine(u"Did not return the data correctly");
        throw toError(LibraryDataError::noData);
    }
    std::optional<LibraryEntry> entry = LibraryEntry::fromAnswer(reading.document->object(), formatCode);
    if (!entry) {
        printDeserializingError(missingKey);
        throw toError(LibraryDataError::insertError);
    }
    return *std::move(entry);
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
    co_return readWorkspace(bodyOf(outcome));
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

QCoro::Task<LibraryEntry> APIService::submitLibraryData(QString apiKey, QString uploadedUrl,
                                                        std::optional<QString> uploadedUrlRight,
                                                        QString formatName, bool is3D, qint64 perspective,
                                                        QString videoName) const
{
    QNetworkRequest request =
        makeRequest(BASE_URL, QStringLiteral("/upload-app/submit-library-data"), apiKey);
    const QByteArray boundary = makeBoundary();
    announceForm(request, boundary);
    const QString formatCode = VideoFormat::fileFormatCode(formatName);

    QByteArray body;
    appendFormField(QStringLiteral("uploadedUrl"), uploadedUrl, body, boundary);
    if (uploadedUrlRight) {
        appendFormField(QStringLiteral("uploadedUrlRight"), *uploadedUrlRight, body, boundary);
    }
    appendFormField(QStringLiteral("fileFormat3D"), formatCode, body, boundary);
    appendFormField(QStringLiteral("is3D"), is3D ? QStringLiteral("true") : QStringLiteral("false"), body,
                    boundary);
    appendFormField(QStringLiteral("perspective"), QString::number(perspective), body, boundary);
    appendFormField(QStringLiteral("videoName"), videoName, body, boundary);
    appendClosingLine(body, boundary);

    const QFuture<HttpOutcome> answer = sendHttp(request, body, m_timeout, {});
    const HttpOutcome outcome = co_await answer;
    co_return readLibraryEntry(bodyOf(outcome), formatCode);
}

} // namespace tessary
