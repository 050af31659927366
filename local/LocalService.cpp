#include "local/LocalService.h"

#include <QMetaEnum>
#include <QSslSocket>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <stdexcept>
#include <sys/socket.h>

namespace tessary::local {
namespace {

constexpr QLatin1StringView apiRoot("/api");

/// Long enough for a client to have read one answer before the next one arrives.
constexpr std::chrono::milliseconds betweenReversedAnswers{100};

constexpr std::chrono::milliseconds betweenDrops{20};

/// Remembers which connection spoke last: the server asks for an answer while that connection's data is read.
class Listener : public QTcpServer
{
public:
    Listener(QPointer<QTcpSocket>& asking, const std::optional<QSslConfiguration>& tls, QObject* parent)
        : QTcpServer(parent), m_asking(asking), m_tls(tls)
    {
    }

protected:
    void incomingConnection(qintptr descriptor) override
    {
        auto* secure = m_tls ? new QSslSocket(this) : nullptr;
        QTcpSocket* socket = m_tls ? secure : new QTcpSocket(this);
        if (!socket->setSocketDescriptor(descriptor)) {
            delete socket;
            return;
        }
        if (m_tls) {
            secure->setSslConfiguration(*m_tls);
            secure->startServerEncryption();
        }
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { m_asking = socket; });
        addPendingConnection(socket);
    }

private:
    QPointer<QTcpSocket>& m_asking;
    const std::optional<QSslConfiguration>& m_tls;
};

/// Closes without the usual farewell: the other side is told that the connection broke.
void reset(QTcpSocket& socket)
{
    const linger none{1, 0};
    setsockopt(static_cast<int>(socket.socketDescriptor()), SOL_SOCKET, SO_LINGER, &none, sizeof none);
    socket.abort();
}

void drip(QTcpSocket& socket)
{
    auto* drops = new QTimer(&socket);
    QObject::connect(drops, &QTimer::timeout, &socket, [&socket] { socket.write(" "); });
    drops->start(betweenDrops);
}

#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
using ResponderArgument = QHttpServerResponder&;
#else
using ResponderArgument = QHttpServerResponder&&;
#endif

QByteArray methodName(QHttpServerRequest::Method method)
{
    const auto methods = QMetaEnum::fromType<QHttpServerRequest::Method>();
    return QByteArray(methods.valueToKey(static_cast<int>(method))).toUpper();
}

QList<QPair<QByteArray, QByteArray>> headersOf(const QHttpServerRequest& request)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    const auto pairs = request.headers().toListOfPairs();
    return {pairs.cbegin(), pairs.cend()};
#else
    return request.headers();
#endif
}

} // namespace

QByteArray ReceivedRequest::header(const QByteArray& name) const
{
    for (const auto& [key, value] : headers) {
        if (key.compare(name, Qt::CaseInsensitive) == 0) {
            return value;
        }
    }
    return {};
}

void LocalService::Pending::deliver() const
{
    // A client that went away meanwhile took the connection with it.
    if (connection && connection->state() == QAbstractSocket::ConnectedState) {
        responder->write(answer.body, answer.contentType,
                         static_cast<QHttpServerResponder::StatusCode>(answer.status));
    }
}

void LocalService::Pending::breakOff(const Breakage& breakage) const
{
    QTcpSocket* socket = connection.data();
    if (socket == nullptr) {
        return;
    }
    QByteArray header =
        "HTTP/1.1 " + QByteArray::number(answer.status) + " Broken\r\nContent-Type: " + answer.contentType;
    if (!answer.location.isEmpty()) {
        header += "\r\nLocation: " + answer.location;
    }
    if (breakage.end != Breakage::End::Dripping) { // whose end is that of the connection
        header += "\r\nContent-Length: " + QByteArray::number(answer.body.size());
    }
    header += "\r\n\r\n";
    switch (breakage.sent) {
    case Breakage::Sent::Nothing:
        break;
    case Breakage::Sent::HalfTheHeader:
        socket->write(header.left(header.size() / 2));
        break;
    case Breakage::Sent::HalfTheBody:
        socket->write(header + answer.body.left(answer.body.size() / 2));
        break;
    case Breakage::Sent::Everything:
        socket->write(header + answer.body);
    }
    socket->flush();
    switch (breakage.end) {
    case Breakage::End::Closed:
        socket->disconnectFromHost();
        break;
    case Breakage::End::Reset:
        reset(*socket);
        break;
    case Breakage::End::Dripping:
        drip(*socket);
    }
}

LocalService::LocalService(BlobStore store)
    : m_library(std::move(store)), m_listener(new Listener(m_asking, m_tls, this))
{
    comeUp();
    m_server.bind(m_listener);
    for (const char* path : {startupPath, uploadUrlPath, registrationPath, libraryPath}) {
        m_server.route(apiRoot + QLatin1StringView(path),
                       [this](const QHttpServerRequest& request, ResponderArgument responder) {
                           handle(request, std::make_shared<QHttpServerResponder>(std::move(responder)));
                       });
    }
}

LocalService::~LocalService() = default;

QString LocalService::baseUrl() const
{
    return QStringLiteral("%1://127.0.0.1:%2%3")
        .arg(m_tls ? QStringLiteral("https") : QStringLiteral("http"))
        .arg(m_port)
        .arg(apiRoot);
}

void LocalService::goDown()
{
    m_listener->close();
    for (QTcpSocket* connection : m_listener->findChildren<QTcpSocket*>()) {
        connection->abort();
    }
}

void LocalService::comeUp()
{
    if (!m_listener->listen(QHostAddress::LocalHost, m_port)) {
        throw std::runtime_error("The local service cannot listen: " +
                                 m_listener->errorString().toStdString());
    }
    m_port = m_listener->serverPort();
}

std::vector<ReceivedRequest> LocalService::requestsTo(const char* path) const
{
    std::vector<ReceivedRequest> found;
    std::copy_if(m_requests.begin(), m_requests.end(), std::back_inserter(found),
                 [path](const ReceivedRequest& request) { return request.path == QLatin1StringView(path); });
    return found;
}

void LocalService::addFault(const char* path, const Fault& fault)
{
    m_faults[QLatin1StringView(path)].append(fault);
}

void LocalService::answerInReverse(const char* path, std::size_t count)
{
    m_reversals[QLatin1StringView(path)] = {count, {}};
}

void LocalService::handle(const QHttpServerRequest& request, std::shared_ptr<QHttpServerResponder> responder)
{
    const ReceivedRequest received{methodName(request.method()), request.url().path().mid(apiRoot.size()),
                                   headersOf(request), request.body()};
    m_requests.push_back(received);
    Q_EMIT requestReceived(received.path);

    QList<Fault>& faults = m_faults[received.path];
    const Fault fault = faults.isEmpty() ? Fault{} : faults.takeFirst();
    const Pending pending{std::move(responder), m_asking,
                          fault.answer ? *fault.answer : ordinaryAnswer(received)};
    Reversal& reversal = m_reversals[received.path];
    if (fault.unanswered) {
        m_unanswered.push_back(pending);
    } else if (fault.breakage) {
        m_unanswered.push_back(pending);
        // Not while the connection is being read.
        QTimer::singleShot(0, this, [pending, breakage = *fault.breakage] { pending.breakOff(breakage); });
    } else if (reversal.count > 0) {
        hold(reversal, pending);
    } else {
        QTimer::singleShot(fault.delay, this, [pending] { pending.deliver(); });
    }
}

Answer LocalService::ordinaryAnswer(const ReceivedRequest& request)
{
    const LocalWorkspace* workspace = workspaceOf(QString::fromUtf8(request.header("X-TESSARY-APPKEY")));
    if (workspace == nullptr) {
        return VideoLibrary::rejection(401, QStringLiteral("unknown key"));
    }
    const bool isRead =
        request.path == QLatin1StringView(startupPath) || request.path == QLatin1StringView(libraryPath);
    if (request.method != (isRead ? "GET" : "POST")) {
        return VideoLibrary::rejection(405, QStringLiteral("wrong method"));
    }
    if (isRead) {
        return request.path == QLatin1StringView(libraryPath) ? m_library.list(*workspace)
                                                              : VideoLibrary::startupInformation(*workspace);
    }
    const std::optional<ReceivedForm> form = readForm(request.header("Content-Type"), request.body);
    if (!form) {
        return VideoLibrary::rejection(400, QStringLiteral("not a multipart form"));
    }
    if (request.path == QLatin1StringView(uploadUrlPath)) {
        return m_library.uploadUrl(*workspace, *form);
    }
    const Answer answer = m_library.registerVideo(*workspace, *form);
    if (answer.status == 200) {
        Q_EMIT videoRegistered(m_library.videos().back());
    }
    return answer;
}

void LocalService::hold(Reversal& reversal, const Pending& pending)
{
    reversal.held.push_back(pending);
    if (--reversal.count > 0) {
        return;
    }
    const std::vector<Pending> held = std::exchange(reversal.held, {});
    std::chrono::milliseconds delay{0};
    for (auto last = held.rbegin(); last != held.rend(); ++last) {
        QTimer::singleShot(delay, this, [pending = *last] { pending.deliver(); });
        delay += betweenReversedAnswers;
    }
}

} // namespace tessary::local
