#pragma once

#include "standins/Fault.h"
#include "standins/VideoLibrary.h"

#include <QByteArray>
#include <QHash>
#include <QHttpServer>
#include <QHttpServerResponder>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QSslConfiguration>
#include <QString>

#include <chrono>
#include <list>
#include <optional>
#include <vector>

class QTcpSocket;

namespace tessary::standins {

class Listener;

struct ReceivedRequest
{
    QByteArray method;
    QString path;                                 ///< below the API root
    QList<QPair<QByteArray, QByteArray>> headers; ///< as received
    QByteArray body;

    /// Empty when there is no such header; the name's case does not count.
    [[nodiscard]] QByteArray header(const QByteArray& name) const;
};

/// Stands in for the service on a loopback port. A request to GET /library lists a key's videos. Faults
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

    /// One where nothing answers.
    [[nodiscard]] static BlobStore noStore()
    {
        return {QStringLiteral("http://127.0.0.1:9/devstoreaccount1")};
    }

    /// @param port 0 takes any that is free
    explicit LocalService(BlobStore store = noStore(), quint16 port = 0);
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

    /// How many of the faults asked for came about. One whose client had gone before does not count.
    [[nodiscard]] std::size_t faultsCarriedOut() const { return m_faultsCarriedOut; }

    /// Breaks every connection and refuses new ones, until it comes up again at the same address.
    /// @return how many connections it broke
    std::size_t goDown();
    void comeUp();

    /// Speaks TLS from the next connection on.
    void useTls(const QSslConfiguration& configuration);

    /// Holds the next so many requests to the path back until all are there, and then answers the last one
    /// first, and each of the others when the answer before it has been read.
    void answerInReverse(const char* path, std::size_t count);

Q_SIGNALS:
    /// Before it is answered.
    void requestReceived(const QString& path);
    void videoRegistered(const tessary::standins::RegisteredVideo& video);

private:
    /// A request whose answer is ready to be given, at any later time.
    struct Pending
    {
        QHttpServerResponder responder;
        QPointer<QTcpSocket> connection;
        Answer answer;
        std::optional<Fault> fault;

        [[nodiscard]] bool isAwaited() const; ///< false when the client has gone
        void deliver();
        void breakOff(const Breakage& breakage) const;
    };

    using Promise = std::list<Pending>::iterator; ///< what is posted and timed holds: it owns nothing

    struct Reversal
    {
        std::size_t count = 0;
        std::vector<Promise> held;
    };

    void handle(const QHttpServerRequest& request, QHttpServerResponder responder);
    Answer ordinaryAnswer(const ReceivedRequest& request);
    void settleLater(std::chrono::milliseconds delay, Promise promise);
    void hold(Reversal& reversal, Promise promise);
    void settleLastFirst(std::vector<Promise> held);

    VideoLibrary m_library;
    QHttpServer m_server;
    Listener* m_listener; ///< owned by the server
    quint16 m_port;       ///< 0 until it listens, where it is free to choose
    std::vector<ReceivedRequest> m_requests;
    QHash<QString, QList<Fault>> m_faults;
    std::size_t m_faultsCarriedOut = 0;
    QHash<QString, Reversal> m_reversals;
    std::list<Pending> m_pending; ///< last: a responder speaks to the server when it goes
};

} // namespace tessary::standins
