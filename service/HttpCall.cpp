#include "service/HttpCall.h"

#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>
#include <QPromise>
#include <QTimer>

#include <algorithm>
#include <functional>

namespace tessary {
namespace {

/// Since no POST is repeated, none should go out on a connection that the other side has given up unnoticed.
constexpr int secondsOfAnIdleConnection = 5;

constexpr qint64 largestAnswer = 64LL * 1024 * 1024;

/// Whether an answer arrived, with a good status or a bad one. A status alone does not tell: a body that is
/// cut off and a time-out after the headers have one too.
bool answerArrived(QNetworkReply::NetworkError error)
{
    return error == QNetworkReply::NoError || error == QNetworkReply::ProxyAuthenticationRequiredError ||
           (error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError &&
            error != QNetworkReply::ContentReSendError) ||
           error == QNetworkReply::ProtocolInvalidOperationError ||
           (error >= QNetworkReply::InternalServerError && error <= QNetworkReply::UnknownServerError);
}

QString describeTransportFailure(const QNetworkReply& reply)
{
    switch (reply.error()) {
    case QNetworkReply::ConnectionRefusedError:
        return QStringLiteral("The service could not be reached: the connection was refused.");
    case QNetworkReply::RemoteHostClosedError:
        return QStringLiteral("The connection to the service was closed before its answer was complete.");
    case QNetworkReply::ContentReSendError:
        return QStringLiteral("The connection to the service broke, or the service redirected the request. "
                              "It is not sent twice.");
    case QNetworkReply::HostNotFoundError:
        return QStringLiteral("The service could not be found. Check the network connection.");
    case QNetworkReply::SslHandshakeFailedError:
        return QStringLiteral("No secure connection to the service could be made: %1")
            .arg(reply.errorString());
    case QNetworkReply::InsecureRedirectError:
        return QStringLiteral("The service redirected the request to another server, which is not followed.");
    case QNetworkReply::TooManyRedirectsError:
        return QStringLiteral("The service redirected the request too many times.");
    default:
        return QStringLiteral("The service could not be reached: %1").arg(reply.errorString());
    }
}

/// The body of one request, which cannot be read again. When a connection ends before the answer, the network
/// library would otherwise send the request up to two times more, and the service register a video each time.
class SingleUseBody : public QIODevice
{
public:
    explicit SingleUseBody(QByteArray content) : m_content(std::move(content))
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    [[nodiscard]] qint64 size() const override { return m_content.size(); }

    bool seek(qint64 /*position*/) override { return false; }

protected:
    qint64 readData(char* data, qint64 maxSize) override
    {
        const qint64 count = qMin(maxSize, m_content.size() - m_read);
        std::copy_n(m_content.cbegin() + m_read, count, data);
        m_read += count;
        return count;
    }

    qint64 writeData(const char* /*data*/, qint64 /*maxSize*/) override { return -1; }

private:
    QByteArray m_content;
    qint64 m_read = 0;
};

QNetworkReply* post(QNetworkAccessManager& session, const QNetworkRequest& request, const QByteArray& content)
{
    auto* body = new SingleUseBody(content);
    QNetworkReply* reply = session.post(request, body);
    body->setParent(reply);
    return reply;
}

/// One request in flight. It belongs to its reply and fulfils its promise once, also when it goes unfinished.
class HttpCall : public QObject
{
public:
    HttpCall(QNetworkReply* reply, std::chrono::milliseconds timeout, const std::stop_token& stop)
        : QObject(reply), m_reply(reply)
    {
        m_promise.start();
        // The library's own limit is on silence: an answer that trickles in for ever would keep to it.
        m_limit.setSingleShot(true);
        connect(&m_limit, &QTimer::timeout, this, [this, timeout] {
            endEarly(QStringLiteral("The service did not answer within %1 seconds.")
                         .arg(std::chrono::duration<double>(timeout).count()));
        });
        m_limit.start(timeout);
        connect(reply, &QNetworkReply::readyRead, this, &HttpCall::readBody);
        connect(reply, &QNetworkReply::finished, this, &HttpCall::finish);
        connect(reply, &QNetworkReply::finished, reply, &QObject::deleteLater);
        // Last: it runs at once when the stop came before.
        m_onStop.emplace(stop, [this] {
            endEarly(QStringLiteral("The request was abandoned because the upload was canceled."));
        });
    }

    ~HttpCall() override
    {
        fulfil({{},
                failure(QNetworkReply::OperationCanceledError,
                        QStringLiteral("The request was abandoned because the program ended."))});
    }

    Q_DISABLE_COPY_MOVE(HttpCall)

    [[nodiscard]] QFuture<HttpOutcome> outcome() { return m_promise.future(); }

private:
    static Error failure(QNetworkReply::NetworkError code, const QString& description)
    {
        return {QStringLiteral("QNetworkReply"), code, description};
    }

    /// Ends a request that has not ended. The first reason counts.
    void endEarly(const QString& reason)
    {
        if (m_ownReason.isEmpty()) {
            m_ownReason = reason;
            m_reply->abort();
        }
    }

    void readBody()
    {
        m_body += m_reply->readAll();
        if (m_body.size() > largestAnswer) {
            endEarly(QStringLiteral("The service's answer is too large to be one of its own."));
        }
    }

    void finish()
    {
        m_limit.stop();
        const QNetworkReply::NetworkError error = m_reply->error();
        if (!m_ownReason.isEmpty()) {
            fulfil({{}, failure(error, m_ownReason)});
        } else if (!answerArrived(error)) {
            fulfil({{}, failure(error, describeTransportFailure(*m_reply))});
        } else {
            m_body += m_reply->readAll();
            fulfil({m_body, std::nullopt});
        }
    }

    void fulfil(const HttpOutcome& outcome)
    {
        if (!std::exchange(m_fulfilled, true)) {
            m_promise.addResult(outcome);
            m_promise.finish();
        }
    }

    QNetworkReply* m_reply;
    QTimer m_limit;
    QByteArray m_body;
    QString m_ownReason; ///< why this side ended the request; empty while it has not
    bool m_fulfilled = false;
    QPromise<HttpOutcome> m_promise;
    std::optional<std::stop_callback<std::function<void()>>> m_onStop;
};

} // namespace

QNetworkAccessManager& sharedHttpSession()
{
    static QPointer<QNetworkAccessManager> session;
    if (session.isNull()) {
        session = new QNetworkAccessManager(QCoreApplication::instance());
        session->setRedirectPolicy(QNetworkRequest::SameOriginRedirectPolicy);
    }
    return *session;
}

QFuture<HttpOutcome> sendHttp(QNetworkRequest request, std::optional<QByteArray> body,
                              std::chrono::milliseconds timeout, const std::stop_token& stop)
{
    request.setAttribute(QNetworkRequest::ConnectionCacheExpiryTimeoutSecondsAttribute,
                         secondsOfAnIdleConnection);
    QNetworkAccessManager& session = sharedHttpSession();
    QNetworkReply* reply = body ? post(session, request, *body) : session.get(request);
    return (new HttpCall(reply, timeout, stop))->outcome();
}

} // namespace tessary
