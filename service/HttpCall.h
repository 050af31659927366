#pragma once

#include "service/Error.h"

#include <QByteArray>
#include <QFuture>
#include <QNetworkRequest>
#include <QUrl>

#include <chrono>
#include <optional>
#include <stop_token>

namespace tessary {

/// How long a request may take until its answer is complete.
inline constexpr std::chrono::milliseconds standardTimeout{60'000};

/// How one request ended: with an answer, whatever its status, or with the reason why there is none.
struct HttpOutcome
{
    QByteArray body;
    std::optional<Error> failure;
};

/// What all requests in flight belong to, made at its first use and gone when the application object begins
/// to end. Requests go through the system's proxy.
[[nodiscard]] QObject& httpSession();

/// Ends the session, and each request in flight with a failure. A next request makes a new one.
void endHttpSession();

/// Whether both addresses lead to one server by one scheme; a port that a scheme has anyhow may be left out.
[[nodiscard]] bool sameOrigin(const QUrl& one, const QUrl& other);

/// Sends one request: a POST when there is a body, a GET otherwise. The future is fulfilled exactly once;
/// a stop fulfils it at once, with a failure of its own, and who awaits it resumes from the event loop.
/// Each request has a connection of its own. A shared one may take a request along when another is abandoned
/// at that moment, and the other side may have given it up unnoticed; no POST is repeated then.
/// A POST is sent once: a connection that breaks before the answer is a failure, and so is a redirect.
/// A GET follows up to ten redirects, within the same origin only, so that a key never travels to another.
/// A redirect that does not say where to is an answer like any other. An answer of more than 64 MiB is a
/// failure.
/// @param timeout from the sending to the last byte of the answer, redirects included
[[nodiscard]] QFuture<HttpOutcome> sendHttp(const QNetworkRequest& request,
                                            const std::optional<QByteArray>& body,
                                            std::chrono::milliseconds timeout, const std::stop_token& stop);

} // namespace tessary
