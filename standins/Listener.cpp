#include "standins/Listener.h"

#include <QSslSocket>

namespace tessary::standins {

std::size_t Listener::breakConnections()
{
    std::size_t broken = 0;
    for (const QPointer<QTcpSocket>& connection : std::exchange(m_connections, {})) {
        if (connection && connection->state() == QAbstractSocket::ConnectedState) {
            connection->abort();
            broken += connection->state() == QAbstractSocket::UnconnectedState ? 1U : 0U;
        }
    }
    return broken;
}

void Listener::incomingConnection(qintptr descriptor)
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
    m_connections.removeAll(nullptr);
    m_connections.append(socket);
    addPendingConnection(socket);
}

} // namespace tessary::standins
