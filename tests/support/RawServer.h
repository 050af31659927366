#pragma once

#include <QHostAddress>
#include <QList>
#include <QString>
#include <QTcpServer>
#include <QTcpSocket>

#include <utility>

namespace tessary {

/// Listens on a free loopback port, keeps every byte of each request, and answers with given bytes.
class RawServer : public QTcpServer
{
public:
    /// @param answers one for each request, the last one for all that follow; none are left unanswered, and a
    /// connection stays unless the answer says that it is closed
    explicit RawServer(QList<QByteArray> answers = {}) : m_answers(std::move(answers))
    {
        if (!listen(QHostAddress::LocalHost)) {
            qFatal("No port to listen on.");
        }
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket* socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(*socket); });
        });
    }

    /// A whole answer.
    /// @param head the status, and more header lines after it
    static QByteArray answer(const QByteArray& head, const QByteArray& body)
    {
        return "HTTP/1.1 " + head + "\r\nContent-Length: " + QByteArray::number(body.size()) +
               "\r\nConnection: close\r\n\r\n" + body;
    }

    void setAnswers(const QList<QByteArray>& answers) { m_answers = answers; }

    [[nodiscard]] QByteArray address() const { return "127.0.0.1:" + QByteArray::number(serverPort()); }

    [[nodiscard]] QString baseUrl() const { return QLatin1StringView("http://" + address() + "/api"); }

    [[nodiscard]] const QList<QByteArray>& requests() const { return m_requests; }

private:
    void read(QTcpSocket& socket)
    {
        const QByteArray soFar = socket.peek(socket.bytesAvailable());
        const qsizetype head = soFar.indexOf("\r\n\r\n") + 4;
        const qsizetype length = soFar.left(head).toLower().indexOf("content-length: ");
        const qsizetype body = length < 0 ? 0 : soFar.mid(length + 16).split('\r').first().toLongLong();
        if (head < 4 || soFar.size() < head + body) {
            return;
        }
        m_requests.append(socket.readAll());
        if (!m_answers.isEmpty()) {
            const QByteArray answer = m_answers.size() > 1 ? m_answers.takeFirst() : m_answers.first();
            socket.write(answer);
            if (answer.contains("Connection: close")) {
                socket.disconnectFromHost();
            }
        }
    }

    QList<QByteArray> m_answers;
    QList<QByteArray> m_requests;
};

} // namespace tessary
