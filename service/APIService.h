#pragma once

#include "service/HttpCall.h"
#include "service/LibraryEntry.h"
#include "service/SASUrlResponse.h"
#include "service/VideoRegistration.h"
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
/// Whatever status an answer has, its body alone decides: each operation hands it to the fromAnswer() of its
/// record, which decodes it, or prints and throws what that record's answers deserve. A request without an
/// answer throws Error in the domain "QNetworkReply" with words for a person. No operation touches the object
/// after its first suspension, so the object may go while a request is in flight.
class APIService
{
public:
    /// @param timeout how long a request may take until its answer is complete
    explicit APIService(QString baseUrl = standardBaseUrl(),
                        std::chrono::milliseconds timeout = standardTimeout);

    /// The root that every request's path is appended to; no trailing slash.
    const QString BASE_URL; // NOLINT(readability-identifier-naming)

    /// The workspace of a key.
    [[nodiscard]] QCoro::Task<std::optional<Workspace>> pullStartupInformation(QString apiKey) const;

    /// An upload URL for one file. A stop abandons it.
    [[nodiscard]] QCoro::Task<SASUrlResponse> requestUploadURL(QString apiKey, QString uniqueFileName,
                                                               std::stop_token stop) const;

    /// Puts an uploaded video into the library.
    [[nodiscard]] QCoro::Task<LibraryEntry> submitLibraryData(QString apiKey, VideoRegistration video) const;

private:
    std::chrono::milliseconds m_timeout;
};

} // namespace tessary
