#pragma once

#include "service/LibraryEntry.h"
#include "service/SASUrlResponse.h"
#include "service/Workspace.h"

#include <QCoro/QCoroTask>
#include <QString>

#include <chrono>
#include <optional>
#include <stop_token>

namespace tessary {

/// The service's API root that this program was built for: an HTTPS URL that ends in "/api".
[[nodiscard]] QString standardBaseUrl();

/// The client of the video service: three requests, each on its own. Main thread only.
///
/// Whatever status an answer has, its body alone decides. A request without an answer throws Error in the
/// domain "QNetworkReply" with words for a person. No operation touches the object after its first
/// suspension, so the object may go while a request is in flight.
class APIService
{
public:
    static constexpr std::chrono::milliseconds standardTimeout{60'000};

    /// @param timeout how long a request may take until its answer is complete
    explicit APIService(QString baseUrl = standardBaseUrl(),
                        std::chrono::milliseconds timeout = standardTimeout);

    /// The root that every request's path is appended to; no trailing slash.
    const QString BASE_URL; // NOLINT(readability-identifier-naming)

    /// The workspace of a key; none when the answer is JSON but not an object. Throws
    /// APIServiceError::invalidURL when the answer is no workspace, after printing why.
    [[nodiscard]] QCoro::Task<std::optional<Workspace>> pullStartupInformation(QString apiKey) const;

    /// An upload URL for one file. Throws the decoder's Error when the answer holds none. A stop abandons it.
    [[nodiscard]] QCoro::Task<SASUrlResponse> requestUploadURL(QString apiKey, QString uniqueFileName,
                                                               std::stop_token stop) const;

    /// Puts an uploaded video into the library. Throws LibraryDataError after printing why.
    /// @param formatName a display name of VideoFormat, sent as its code
    /// @param perspective in degrees
    [[nodiscard]] QCoro::Task<LibraryEntry> submitLibraryData(QString apiKey, QString uploadedUrl,
                                                              std::optional<QString> uploadedUrlRight,
                                                              QString formatName, bool is3D,
                                                              qint64 perspective, QString videoName) const;

private:
    std::chrono::milliseconds m_timeout;
};

} // namespace tessary
