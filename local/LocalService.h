#pragma once

#include "local/Fault.h"
#include "local/VideoLibrary.h"

#include <QHash>
#include <QHttpServer>
#include <QHttpServerResponder>
#include <QObject>
#include <QPointer>
#include <QSslConfiguration>

#include <memory>
#include <optional>
#include <vector>

class QTcpServer;
class QTcpSocket;

namespace tessary::local {

struct ReceivedRequest
{
    QByteArray method;
    QString path;                                 ///< below the API root
    QList<QPair<QByteArray, QByteArray>> headers; ///< as received
    QByteArray body;

    /// Empty when there is no such header; the name's case does not count.
    [[nodiscard]] QByteArray header(const QByteArray& name) const;
};

/// Stands in for the service on a free loopback port. A request to GET /library lists a key's videos. Faults
/// are asked for per path (below the API root) and used up by one request each, in order. Main thread only;
/// throws std::runtime_error when it cannot listen.
class LocalService : public QObject
{
    Q_OBJECT

public:
    static constexpr char startupPath[] = "/upload-app/pull-startup-information";
    static constexpr char uploadUrlPath[] = "/upload-app/direct-file-upload-sas";
    static constexpr char registrationPath[] = "/upload-app/submit-library-data";
    static constexpr char libraryPath[] = "/library";

    /// The default store is one where nothing answers.
    explicit LocalService(BlobStore store = {QStringLiteral("http://127.0.0.1:9/devstoreaccount1")});
    ~LocalService() override;
    Q_DISABLE_COPY_MOVE(LocalService)

    /// The API root to give to the program.
    [[nodiscard]] QString baseUrl() const;

    [[nodiscard]] const VideoLibrary& library() const { return m_library; }

    [[nodiscard]] const std::vector<ReceivedRequest>& requests() const { return m_requests; }

    [[nodiscard]] std::vector<ReceivedRequest> requestsTo(const char* path) const;

    void addFault(const char* path, const Fault& fault);

    /// What was asked for and has not happened will not.
    void clearFaults() { m_faults.clear(); }

    /// Breaks every connection and refuses new ones, until it comes up again at the same address.
    void goDown();
    void comeUp();

    /// Speaks TLS from the next connection on.
    void useTls(const QSslConfiguration& configuration) { m_tls = configuration; }

    /// Holds the next so many requests to the path back until all are there, and then answers the last one
    /// first.
    void answerInReverse(const char* path, std::size_t count);

Q_SIGNALS:
    /// Before it is answered.
    void requestReceived(const QString& path);
    void videoRegistered(const tessary::local::RegisteredVideo& video);

private:
    /// A request whose answer is ready to be given, at any later time.
    struct Pending
    {
        std::shared_ptr<QHttpServerResponder> responder;
        QPointer<QTcpSocket> connection;
        Answer answer;

        void deliver() const;
        void breakOff(const Breakage& breakage) const;
    };

    struct Reversal
    {
        std::size_t count = 0;
        std::vector<Pending> held;
    };

    void handle(const QHttpServerRequest& request, std::shared_ptr<QHttpServerResponder> responder);
    Answer ordinaryAnswer(const ReceivedRequest& request);
    void hold(Reversal& reversal, const Pending& pending);

    VideoLibrary m_library;
    QHttpServer m_server;
    std::optional<QSslConfiguration> m_tls;
    QTcpServer* m_listener;        ///< owned by the server
    quint16 m_port = 0;            ///< free to choose until it listens
    QPointer<QTcpSocket> m_asking; ///< whose request is being read
    std::vector<ReceivedRequest> m_requests;
    QHash<QString, QList<Fault>> m_faults;
    QHash<QString, Reversal> m_reversals;
    std::vector<Pending> m_unanswered;
};

} // namespace tessary::local
