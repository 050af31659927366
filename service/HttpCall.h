#pragma once

#include "service/Error.h"

#include <QByteArray>
#include <QFuture>
#include <QNetworkRequest>

#include <chrono>
#include <optional>
#include <stop_token>

class QNetworkAccessManager;

namespace tessary {

/// How one request ended: with an answer, whatever its status, or with the reason why there is none.
struct HttpOutcome
{
    QByteArray body;
    std::optional<Error> failure;
};

/// The program's one HTTP session, made at its first use. It belongs to the application object and is gone
/// with it.
[[nodiscard]] QNetworkAccessManager& sharedHttpSession();

/// Sends one request: a POST when there is a body, a GET otherwise. The future is fulfilled exactly once;
/// a stop fulfils it at once, with a failure of its own, and who awaits it resumes from the event loop.
/// A POST is sent once: a connection that breaks before the answer is a failure, and so is a redirect that
/// wants the body again.
/// Redirects are followed within the same origin only, so that a key never travels to another. An answer of
/// more than 64 MiB is a failure.
/// @param timeout from the sending to the last byte of the answer, redirects included
[[nodiscard]] QFuture<HttpOutcome> sendHttp(QNetworkRequest request, std::optional<QByteArray> body,
                                            std::chrono::milliseconds timeout, const std::stop_token& stop);

} // namespace tessary
