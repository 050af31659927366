#include "standins/LocalService.h"

#include "standins/Listener.h"

#include <QMetaEnum>
#include <QTimer>

#include <stdexcept>
#include <sys/socket.h>

namespace tessary::standins {
namespace {

constexpr QLatin1StringView apiRoot("/api");

constexpr std::chrono::milliseconds betweenDrops{20};

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
    QObject::connect(&socket, &QTcpSocket::disconnected, drops, &QTimer::stop);
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

bool LocalService::Pending::isAwaited() const
{
    return connection && connection->state() == QAbstractSocket::ConnectedState;
}

void LocalService::Pending::deliver()
{
    responder.write(answer.body, answer.contentType,
                    static_cast<QHttpServerResponder::StatusCode>(answer.status));
}

void LocalService::Pending::breakOff(const Breakage& breakage) const
{
    QTcpSocket* socket = connection.data();
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

LocalService::LocalService(BlobStore store, quint16 port)
    : m_library(std::move(store)), m_listener(new Listener(this)), m_port(port)
{
    comeUp();
    m_server.bind(m_listener);
    for (const char* path : {startupPath, uploadUrlPath, registrationPath, libraryPath}) {
        m_server.route(apiRoot + QLatin1StringView(path),
                       [this](const QHttpServerRequest& request, ResponderArgument responder) {
                           handle(request, std::move(responder));
                       });
    }
}

LocalService::~LocalService() = default;

QString LocalService::baseUrl() const
{
    return QStringLiteral("%1://127.0.0.1:%2%3")
        .arg(m_listener->speaksTls() ? QStringLiteral("https") : QStringLiteral("http"))
        .arg(m_port)
        .arg(apiRoot);
}

void LocalService::useTls(const QSslConfiguration& configuration)
{
    m_listener->useTls(configuration);
}

std::size_t LocalService::goDown()
{
    m_listener->close();
    return m_listener->breakConnections();
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

void LocalService::handle(const QHttpServerRequest& request, QHttpServerResponder responder)
{
    const ReceivedRequest received{methodName(request.method()), request.url().path().mid(apiRoot.size()),
                                   headersOf(request), request.body()};
    m_requests.push_back(received);
    Q_EMIT requestReceived(received.path);

    QList<Fault>& faults = m_faults[received.path];
    std::optional<Fault> fault;
    if (!faults.isEmpty()) {
        fault = faults.takeFirst();
    }
    const Answer answer = fault && fault->answer ? *fault->answer : ordinaryAnswer(received);
    const Promise promise =
        m_pending.insert(m_pending.end(), Pending{std::move(responder), m_listener->asking(), answer, fault});
    Reversal& reversal = m_reversals[received.path];
    if (!fault && reversal.count > 0) {
        hold(reversal, promise);
    } else {
        settleLater(fault ? fault->delay : std::chrono::milliseconds(0), promise);
    }
}

void LocalService::settleLater(std::chrono::milliseconds delay, Promise promise)
{
    // Not while the connection is being read, in any case.
    QTimer::singleShot(delay, this, [this, promise] {
        const Fault fault = promise->fault.value_or(Fault{});
        if (promise->isAwaited()) {
            if (fault.breakage) {
                promise->breakOff(*fault.breakage);
            } else if (!fault.unanswered) {
                promise->deliver();
            }
            m_faultsCarriedOut += promise->fault ? 1U : 0U;
        }
        if (!fault.breakage && !fault.unanswered) {
            m_pending.erase(promise);
        }
    });
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

void LocalService::hold(Reversal& reversal, Promise promise)
{
    reversal.held.push_back(promise);
    if (--reversal.count == 0) {
        QTimer::singleShot(0, this,
                           [this, held = std::exchange(reversal.held, {})] { settleLastFirst(held); });
    }
}

void LocalService::settleLastFirst(std::vector<Promise> held)
{
    while (!held.empty()) {
        const Promise last = held.back();
        held.pop_back();
        const QPointer<QTcpSocket> connection = last->isAwaited() ? last->connection : nullptr;
        if (connection) {
            last->deliver();
        }
        m_pending.erase(last);
        if (connection) {
            // A client that is told of the end behind an answer hangs up when it has read both.
            connect(
                connection, &QTcpSocket::disconnected, this, [this, held] { settleLastFirst(held); },
                Qt::QueuedConnection);
            connection->flush();
            shutdown(static_cast<int>(connection->socketDescriptor()), SHUT_WR);
            return;
        }
    }
}

} // namespace tessary::standins
