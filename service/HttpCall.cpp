#include "service/HttpCall.h"

#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>
#include <QPromise>

#include <functional>

namespace tessary {
namespace {

constexpr qint64 largestAnswer = 64LL * 1024 * 1024;

/// Whether an answer arrived, with a good status or a bad one. A status alone does not tell: a body that is
/// cut off and a time-out after the headers have one too.
bool answerArrived(QNetworkReply::NetworkError error)
{
    return error == QNetworkReply::NoError || error == QNetworkReply::ProxyAuthenticationRequiredError ||
           (error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError) ||
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

/// One request in flight. It belongs to its reply and fulfils its promise once, also when it goes unfinished.
class HttpCall : public QObject
{
public:
    HttpCall(QNetworkReply* reply, std::chrono::milliseconds timeout, const std::stop_token& stop)
        : QObject(reply), m_reply(reply), m_timeout(timeout)
    {
        m_promise.start();
        connect(reply, &QNetworkReply::readyRead, this, &HttpCall::readBody);
        connect(reply, &QNetworkReply::finished, this, &HttpCall::finish);
        connect(reply, &QNetworkReply::finished, reply, &QObject::deleteLater);
        m_onStop.emplace(stop, [this] { abandon(); }); // last: it runs at once when the stop came before
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

    void abandon()
    {
        m_ownReason = QStringLiteral("The request was abandoned because the upload was canceled.");
        m_reply->abort();
    }

    void readBody()
    {
        m_body += m_reply->readAll();
        if (m_body.size() > largestAnswer && m_ownReason.isEmpty()) {
            m_ownReason = QStringLiteral("The service's answer is too large to be one of its own.");
            m_reply->abort();
        }
    }

    void finish()
    {
        const QNetworkReply::NetworkError error = m_reply->error();
        if (!m_ownReason.isEmpty()) {
            fulfil({{}, failure(error, m_ownReason)});
        } else if (error == QNetworkReply::OperationCanceledError) {
            const double seconds = std::chrono::duration<double>(m_timeout).count();
            fulfil({{},
                    failure(error,
                            QStringLiteral("The service did not answer within %1 seconds.").arg(seconds))});
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
    std::chrono::milliseconds m_timeout;
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
    request.setTransferTimeout(static_cast<int>(timeout.count()));
    QNetworkAccessManager& session = sharedHttpSession();
    QNetworkReply* reply = body ? session.post(request, *body) : session.get(request);
    return (new HttpCall(reply, timeout, stop))->outcome();
}

} // namespace tessary
