#pragma once

#include <QList>
#include <QPointer>
#include <QSslConfiguration>
#include <QTcpServer>
#include <QTcpSocket>

#include <optional>

namespace tessary::standins {

/// Takes the connections of an HTTP server, which makes them its own, and remembers them.
class Listener : public QTcpServer
{
public:
    explicit Listener(QObject* parent) : QTcpServer(parent) {}

    /// From the next connection on.
    void useTls(const QSslConfiguration& configuration) { m_tls = configuration; }

    [[nodiscard]] bool speaksTls() const { return m_tls.has_value(); }

    /// The connection that spoke last: a server asks for an answer while that connection's data is read.
    [[nodiscard]] QTcpSocket* asking() const { return m_asking; }

    /// @return how many there were
    std::size_t breakConnections();

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    std::optional<QSslConfiguration> m_tls;
    QPointer<QTcpSocket> m_asking;
    QList<QPointer<QTcpSocket>> m_connections;
};

} // namespace tessary::standins
