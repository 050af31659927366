#include "service/HttpCall.h"

#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QNetworkProxyFactory>
#include <QNetworkReply>
#include <QPromise>
#include <QTimer>

#include <algorithm>
#include <array>
#include <functional>

namespace tessary {
namespace {

constexpr qint64 largestAnswer = 64LL * 1024 * 1024;
constexpr int mostRedirects = 10;

/// 0 without one.
int statusOf(const QNetworkReply& reply)
{
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

/// Whether the network library gave up on the body of an answer. Its code for that is also the one of many a
/// status, so its words have to tell.
bool decompressionFailed(const QNetworkReply& reply)
{
    return reply.error() == QNetworkReply::UnknownContentError &&
           reply.errorString().startsWith(QLatin1StringView("Decompression failed: "));
}

/// Whether the network's proxy answered in place of the service.
bool proxyWantsPassword(const QNetworkReply& reply)
{
    return reply.error() == QNetworkReply::ProxyAuthenticationRequiredError &&
           (statusOf(reply) == 0 || reply.hasRawHeader("Proxy-Authenticate"));
}

/// Whether an answer arrived, with a good status or a bad one. A status alone does not tell: a body that is
/// cut off and a time-out after the headers have one too.
bool answerArrived(const QNetworkReply& reply)
{
    const QNetworkReply::NetworkError error = reply.error();
    if (decompressionFailed(reply) || proxyWantsPassword(reply)) {
        return false;
    }
    if (error == QNetworkReply::ContentReSendError) {
        // The library wants to start the body over as soon as one of these is there, redirect or not.
        const int status = statusOf(reply);
        return status == 307 || status == 308;
    }
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
    case QNetworkReply::ContentReSendError:
        return QStringLiteral("The connection to the service broke. The request is not sent twice.");
    case QNetworkReply::HostNotFoundError:
        return QStringLiteral("The service could not be found. Check the network connection.");
    case QNetworkReply::SslHandshakeFailedError:
        return QStringLiteral("No secure connection to the service could be made: %1")
            .arg(reply.errorString());
    case QNetworkReply::UnknownContentError:
        return QStringLiteral("The service's answer could not be decompressed: it is damaged or too large.");
    case QNetworkReply::ProxyAuthenticationRequiredError:
        return QStringLiteral("The network's proxy asks for a password, which this program cannot give.");
    default:
        return QStringLiteral("The service could not be reached: %1").arg(reply.errorString());
    }
}

/// Where an answer sends the request to; invalid when it does not, or does not say where.
QUrl redirectTarget(const QNetworkReply& reply)
{
    static constexpr std::array redirects{301, 302, 303, 307, 308};
    if (std::find(redirects.begin(), redirects.end(), statusOf(reply)) == redirects.end()) {
        return {};
    }
    const QUrl location = QUrl::fromEncoded(reply.rawHeader("Location"), QUrl::StrictMode);
    return location.isValid() ? reply.url().resolved(location) : QUrl();
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

QNetworkReply* post(QNetworkAccessManager& manager, const QNetworkRequest& request, const QByteArray& content)
{
    auto* body = new SingleUseBody(content);
    QNetworkReply* reply = manager.post(request, body);
    body->setParent(reply);
    return reply;
}

/// One request in flight. It belongs to its reply, the last one when it is redirected, and fulfils its
/// promise once, also when it goes unfinished.
class HttpCall : public QObject
{
public:
    HttpCall(QNetworkReply* reply, std::chrono::milliseconds timeout, const std::stop_token& stop)
    {
        m_promise.start();
        // The library's own limit is on silence: an answer that trickles in for ever would keep to it.
        m_limit.setSingleShot(true);
        m_limit.setTimerType(Qt::PreciseTimer);
        connect(&m_limit, &QTimer::timeout, this, [this, timeout] {
            endEarly(QStringLiteral("The service did not answer within %1 seconds.")
                         .arg(std::chrono::duration<double>(timeout).count()));
        });
        m_limit.start(timeout);
        waitFor(reply);
        // Last: it runs at once when the stop came before.
        m_onStop.emplace(stop, [this] {
            endEarly(QStringLiteral("The request was abandoned because the upload was canceled."));
        });
    }

    ~HttpCall() override
    {
        fail(QNetworkReply::OperationCanceledError,
             QStringLiteral("The request was abandoned because the program ended."));
    }

    Q_DISABLE_COPY_MOVE(HttpCall)

    [[nodiscard]] QFuture<HttpOutcome> outcome() { return m_promise.future(); }

private:
    void waitFor(QNetworkReply* reply)
    {
        m_reply = reply;
        setParent(reply);
        connect(reply, &QNetworkReply::readyRead, this, &HttpCall::readBody);
        connect(reply, &QNetworkReply::finished, this, &HttpCall::finish);
        connect(reply, &QNetworkReply::finished, reply, &QObject::deleteLater);
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
        if (!m_ownReason.isEmpty()) {
            fail(m_reply->error(), m_ownReason);
        } else if (!answerArrived(*m_reply)) {
            fail(m_reply->error(), describeTransportFailure(*m_reply));
        } else if (const QUrl target = redirectTarget(*m_reply); target.isValid()) {
            redirect(target);
        } else {
            fulfil({m_body, std::nullopt});
        }
    }

    void redirect(const QUrl& target)
    {
        if (m_reply->operation() != QNetworkAccessManager::GetOperation) {
            fail(QNetworkReply::ContentReSendError,
                 QStringLiteral("The service redirected the request. It is not sent twice."));
        } else if (!sameOrigin(m_reply->url(), target)) {
            fail(QNetworkReply::InsecureRedirectError,
                 QStringLiteral(
                     "The service redirected the request to another server, which is not followed."));
        } else if (++m_redirects > mostRedirects) {
            fail(QNetworkReply::TooManyRedirectsError,
                 QStringLiteral("The service redirected the request too many times."));
        } else {
            QNetworkRequest request = m_reply->request();
            request.setUrl(target);
            m_body.clear();
            waitFor(m_reply->manager()->get(request));
        }
    }

    void fail(QNetworkReply::NetworkError code, const QString& description)
    {
        fulfil({{}, Error(QStringLiteral("QNetworkReply"), code, description)});
    }

    /// Only the first outcome counts.
    void fulfil(const HttpOutcome& outcome)
    {
        m_promise.addResult(outcome);
        m_promise.finish();
    }

    QNetworkReply* m_reply = nullptr;
    QTimer m_limit{this};
    int m_redirects = 0;
    QByteArray m_body;
    QString m_ownReason; ///< why this side ended the request; empty while it has not
    QPromise<HttpOutcome> m_promise;
    std::optional<std::stop_callback<std::function<void()>>> m_onStop;
};

QObject* theSession = nullptr; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

} // namespace

QObject& httpSession()
{
    if (theSession == nullptr) {
        theSession = new QObject;
        QNetworkProxyFactory::setUseSystemConfiguration(true);
        // Not as a child of the application object: those go when it has ended, and its end is also that of
        // all events. What a manager's thread has put off to an event would never be cleared away.
        qAddPostRoutine(endHttpSession);
    }
    return *theSession;
}

void endHttpSession()
{
    delete std::exchange(theSession, nullptr);
}

bool sameOrigin(const QUrl& one, const QUrl& other)
{
    const auto port = [](const QUrl& url) {
        return url.port(url.scheme() == QLatin1StringView("https") ? 443 : 80);
    };
    return one.scheme() == other.scheme() && one.host() == other.host() && port(one) == port(other);
}

QFuture<HttpOutcome> sendHttp(const QNetworkRequest& request, const std::optional<QByteArray>& body,
                              std::chrono::milliseconds timeout, const std::stop_token& stop)
{
    auto* manager = new QNetworkAccessManager(&httpSession());
    // The library drops the body of a redirect that it means to follow, also where it then cannot.
    manager->setRedirectPolicy(QNetworkRequest::ManualRedirectPolicy);
    QNetworkReply* reply = body ? post(*manager, request, *body) : manager->get(request);
    auto* call = new HttpCall(reply, timeout, stop);
    QObject::connect(call, &QObject::destroyed, manager, &QObject::deleteLater);
    return call->outcome();
}

} // namespace tessary
