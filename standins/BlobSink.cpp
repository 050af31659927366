#include "standins/BlobSink.h"

#include <QTcpSocket>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <utility>

namespace tessary::standins {
namespace {

double now()
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

QByteArray head(const char* status, qint64 length)
{
    return QByteArrayLiteral("HTTP/1.1 ") + status + "\r\nContent-Length: " + QByteArray::number(length) +
           "\r\nETag: \"0x1\"\r\nLast-Modified: Thu, 01 Jan 2026 00:00:00 GMT\r\nx-ms-version: 2021-12-02"
           "\r\nx-ms-request-id: 1\r\nx-ms-request-server-encrypted: false\r\n";
}

} // namespace

BlobSink::BlobSink(qint64 bytesPerSecond) : m_bytesPerSecond(bytesPerSecond)
{
    if (!m_server.listen(QHostAddress::LocalHost)) {
        throw std::runtime_error("The sink cannot listen.");
    }
    connect(&m_server, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket* connection = m_server.nextPendingConnection()) {
            connect(connection, &QTcpSocket::disconnected, connection, &QObject::deleteLater);
            connect(
                connection, &QTcpSocket::readyRead, this,
                [this, connection, request = std::make_shared<Request>()] { take(*connection, *request); });
        }
    });
}

BlobStore BlobSink::store() const
{
    return {QStringLiteral("http://127.0.0.1:%1/devstoreaccount1").arg(m_server.serverPort())};
}

void BlobSink::take(QTcpSocket& connection, Request& request)
{
    for (;;) {
        while (!request.isComplete) {
            if (!connection.canReadLine()) {
                return;
            }
            const QByteArray line = connection.readLine().trimmed();
            if (line.isEmpty()) {
                begin(request);
            } else if (request.verb.isEmpty()) {
                request.verb = line.split(' ').value(0);
                request.target = line.split(' ').value(1);
            } else if (line.toLower().startsWith("content-length:")) {
                request.length = line.mid(line.indexOf(':') + 1).trimmed().toLongLong();
            }
        }
        request.missing -= connection.skip(std::min(request.missing, connection.bytesAvailable()));
        if (request.missing > 0) {
            return;
        }
        const auto delay = std::chrono::duration<double, std::milli>(delayOf(request.length));
        QTimer::singleShot(
            std::chrono::round<std::chrono::milliseconds>(delay), Qt::PreciseTimer, &connection,
            [this, &connection, complete = std::exchange(request, {})] { answer(connection, complete); });
    }
}

double BlobSink::delayOf(qint64 bytes)
{
    if (m_bytesPerSecond == 0) {
        return 0;
    }
    m_linkIsFree = std::max(m_linkIsFree, now()) +
                   static_cast<double>(bytes) * 1000 / static_cast<double>(m_bytesPerSecond);
    return m_linkIsFree - now();
}

/// The head is there.
void BlobSink::begin(Request& request)
{
    request.isComplete = true;
    request.missing = request.length;
    Blob& blob = m_blobs[request.target.split('?').front()];
    if (request.verb == "PUT" && (blob.firstBlock == 0 || blob.isCommitted)) {
        blob = {now(), 0, false};
    }
}

void BlobSink::answer(QTcpSocket& connection, const Request& request)
{
    Blob& blob = m_blobs[request.target.split('?').front()];
    if (request.verb == "PUT") {
        blob.isCommitted = !request.target.contains("comp=block&") && !request.target.endsWith("comp=block");
        if (blob.isCommitted) {
            Q_EMIT committed(blob.firstBlock, now());
        } else {
            blob.size += request.length;
        }
        connection.write(head("201 Created", 0) + "\r\n");
    } else if (blob.isCommitted) {
        connection.write(head("200 OK", blob.size) + "x-ms-blob-type: BlockBlob\r\n\r\n");
    } else {
        connection.write(head("404 Not Found", 0) + "x-ms-error-code: BlobNotFound\r\n\r\n");
    }
}

} // namespace tessary::standins
