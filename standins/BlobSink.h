#pragma once

#include "standins/BlobStore.h"

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QTcpServer>

class QTcpSocket;

namespace tessary::standins {

/// Answers uploads as a blob store does and forgets what they bring: the thousandth block costs what the
/// first did. On a loopback port, until it goes. Main thread only; throws std::runtime_error when it cannot
/// listen.
class BlobSink : public QObject
{
    Q_OBJECT

public:
    /// Takes that much at most of all uploads together, as a link does; 0 is as fast as it comes.
    explicit BlobSink(qint64 bytesPerSecond = 0);

    [[nodiscard]] BlobStore store() const;

Q_SIGNALS:
    /// All blocks of a blob are there. When the first of them began to come in, and now, both in milliseconds
    /// of the monotonic clock.
    void committed(double firstBlock, double commit);

private:
    /// A request as far as it has come in.
    struct Request
    {
        QByteArray verb;
        QByteArray target;
        qint64 length = 0;
        qint64 missing = 0; ///< of the body
        bool isComplete = false;
    };

    struct Blob
    {
        double firstBlock = 0;
        qint64 size = 0;
        bool isCommitted = false;
    };

    void take(QTcpSocket& connection, Request& request);
    void begin(Request& request);
    /// In milliseconds: how long that many bytes more are still on their way.
    [[nodiscard]] double delayOf(qint64 bytes);
    void answer(QTcpSocket& connection, const Request& request);

    QTcpServer m_server;
    qint64 m_bytesPerSecond;
    double m_linkIsFree = 0;         ///< when, in milliseconds of the monotonic clock
    QHash<QByteArray, Blob> m_blobs; ///< by their path
};

} // namespace tessary::standins
