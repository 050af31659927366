#include "service/HttpCall.h"
#include "tests/service/Calls.h"
#include "tests/support/CapturedOutput.h"
#include "tests/support/RawServer.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>

#include <algorithm>

using namespace tessary;
using namespace std::chrono_literals;

namespace {

const QByteArray list = RawServer::answer("200 OK", "[]");

QByteArray redirect(const QByteArray& status, const QByteArray& location)
{
    return RawServer::answer(status + " Moved\r\nLocation: " + location, "{}");
}

} // namespace

/// Requests that get no answer, may not go out, or go elsewhere.
class TransportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void noAnswer_data();
    void noAnswer();
    void redirectsAreFollowed_data();
    void redirectsAreFollowed();
    void theKeyStaysWithItsOrigin();
    void theSystemsProxyIsUsed();
    void whatCannotBeSent();
    void theLimitOfARequest();
    void requestsAreAbandoned();
    void noRequestSharesItsConnection();

private:
    RawServer m_proxy;
};

void TransportTest::initTestCase()
{
    // Before the first request: some systems look at their environment only once.
    for (const char* name : {"http_proxy", "https_proxy", "HTTP_PROXY", "HTTPS_PROXY"}) {
        qputenv(name, "http://" + m_proxy.address());
    }
    for (const char* name : {"no_proxy", "NO_PROXY"}) {
        qputenv(name, "127.0.0.1,nowhere.invalid");
    }
    qputenv("RES_OPTIONS", "timeout:1 attempts:1"); // where no name server is to be reached
}

void TransportTest::noAnswer_data()
{
    QTest::addColumn<Call>("call");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("words");
    QTest::addColumn<int>("requests");
    const auto row = [](const char* name, const Call& call, const QByteArray& answer, const char* words,
                        int requests = 1) {
        QTest::newRow(name) << call << answer << QString::fromLatin1(words) << requests;
    };
    const Call get = pullStartup;
    const Call post = submit;
    row("too large, and goes on", get,
        "HTTP/1.1 200 OK\r\nContent-Length: 99999999\r\n\r\n" + QByteArray(70 * 1024 * 1024, ' '),
        "The service's answer is too large to be one of its own.");
    constexpr char noGzip[] = "\x1f\x8b\x08\0\0\0\0\0\0\x03\x07 and no deflated data";
    const QByteArray brokenGzip(noGzip, sizeof noGzip - 1);
    const char* unpacked = "The service's answer could not be decompressed: it is damaged or too large.";
    const QByteArray zeros = qCompress(QByteArray(20 * 1024 * 1024, '0')).mid(4);
    for (const char* status : {"200 OK", "422 No", "500 Broken"}) {
        const QByteArray head = QByteArray(status) + "\r\nContent-Encoding: ";
        row(head + "gzip", get, RawServer::answer(head + "gzip", brokenGzip), unpacked);
        row(head + "deflate", post, RawServer::answer(head + "deflate", zeros), unpacked);
    }
    row("round and round", get, redirect("302", "?again"),
        "The service redirected the request too many times.", 11);
    row("another scheme", get, redirect("301", "https://127.0.0.1/"),
        "The service redirected the request to another server, which is not followed.");
    for (const char* status : {"301", "302", "303", "307", "308"}) {
        row(status, post, redirect(status, "/elsewhere"),
            "The service redirected the request. It is not sent twice.");
    }
}

void TransportTest::noAnswer()
{
    QFETCH(Call, call);
    QFETCH(QByteArray, answer);
    QFETCH(QString, words);
    QFETCH(int, requests);
    const RawServer server({answer});
    const CapturedOutput output;
    const Ending ending = run(call, APIService(server.baseUrl()));
    QCOMPARE(ending.description, words);
    QCOMPARE(ending.domain, QStringLiteral("QNetworkReply"));
    QVERIFY2(!output.text().contains("Error deserializing"), output.text().constData());
    QCOMPARE(server.requests().size(), requests);
}

void TransportTest::redirectsAreFollowed_data()
{
    QTest::addColumn<QByteArray>("status");
    for (const char* status : {"301", "302", "303", "307", "308"}) {
        QTest::newRow(status) << QByteArray(status);
    }
}

void TransportTest::redirectsAreFollowed()
{
    QFETCH(QByteArray, status);
    RawServer server;
    server.setAnswers({redirect(status, "../else/where?x=%20"),
                       redirect(status, "http://" + server.address() + "/there"), list});
    const Ending ending = run(pullStartup, APIService(server.baseUrl()));
    QCOMPARE(ending.result, QStringLiteral("none"));
    QCOMPARE(server.requests().size(), 3);
    const QByteArray first = server.requests().at(0);
    const QByteArray rest = first.mid(first.indexOf('\r'));
    QCOMPARE(server.requests().at(1), "GET /api/else/where?x=%20 HTTP/1.1" + rest);
    QCOMPARE(server.requests().at(2), "GET /there HTTP/1.1" + rest);
}

void TransportTest::theKeyStaysWithItsOrigin()
{
    const RawServer other({list});
    RawServer server;
    const QByteArray otherName = "localhost:" + QByteArray::number(server.serverPort());
    for (const QByteArray& address : {other.address(), otherName}) {
        server.setAnswers({redirect("302", "http://" + address + "/")});
        QCOMPARE(run(pullStartup, APIService(server.baseUrl())).result, QStringLiteral("error"));
    }
    QVERIFY(other.requests().isEmpty());
    QCOMPARE(server.requests().size(), 2);
    QVERIFY(sameOrigin(QUrl("http://a/b"), QUrl("http://a:80/c")));
    QVERIFY(sameOrigin(QUrl("https://a:443/b"), QUrl("https://a/c")));
    QVERIFY(!sameOrigin(QUrl("https://a:80/"), QUrl("https://a/")));
    QVERIFY(!sameOrigin(QUrl("http://a:443/"), QUrl("https://a/")));
}

void TransportTest::theSystemsProxyIsUsed()
{
    m_proxy.setAnswers({list});
    QCOMPARE(run(pullStartup, APIService(QStringLiteral("http://service.invalid/api"))).result,
             QStringLiteral("none"));
    QCOMPARE(m_proxy.requests().size(), 1);
    QVERIFY(m_proxy.requests().at(0).startsWith("GET http://service.invalid/api/upload-app/pull-startup"));

    // Over TLS, the proxy sees neither path nor key.
    m_proxy.setAnswers(
        {RawServer::answer("407 Who are you?\r\nProxy-Authenticate: Basic realm=\"x\"", "[]")});
    for (const char* url : {"https://service.invalid/api", "http://service.invalid/api"}) {
        const CapturedOutput output;
        QCOMPARE(run(pullStartup, APIService(QLatin1StringView(url))).description,
                 QStringLiteral("The network's proxy asks for a password, which this program cannot give."));
        QCOMPARE(output.text(), QByteArray());
    }
    QVERIFY(m_proxy.requests().at(1).startsWith("CONNECT service.invalid:443"));
    QVERIFY(!m_proxy.requests().at(1).contains("a key"));

    const qsizetype before = m_proxy.requests().size();
    const RawServer excepted({list});
    QCOMPARE(run(pullStartup, APIService(excepted.baseUrl())).result, QStringLiteral("none"));
    QCOMPARE(m_proxy.requests().size(), before);
}

void TransportTest::whatCannotBeSent()
{
    const std::initializer_list<std::pair<const char*, const char*>> places{
        {"http://no host/api",
         "The operation couldn’t be completed. (tessary_macos_uploader.APIServiceError error 0.)"},
        {"http://nowhere.invalid/api", "The service could not be found. Check the network connection."},
        {"no://place/api", "The service could not be reached: Protocol \"no\" is unknown"}};
    for (const auto& [place, words] : places) {
        QCOMPARE(run(pullStartup, APIService(QLatin1StringView(place))).description,
                 QString::fromUtf8(words));
    }

    const RawServer server;
    for (const char* key : {"key\rX", "key\nX", "\0"}) {
        const Call smuggle = [key](const APIService& client) {
            return [](QCoro::Task<std::optional<Workspace>> request) -> QCoro::Task<QString> {
                co_await request;
                co_return QString();
            }(client.pullStartupInformation(QString::fromLatin1(key, key[0] == '\0' ? 1 : -1)));
        };
        const Ending ending = run(smuggle, APIService(server.baseUrl()));
        QCOMPARE(ending.description,
                 QStringLiteral("The API key holds a line break or a null character and cannot be sent."));
        QCOMPARE(ending.domain + QString::number(ending.code), "QNetworkRequest0");
    }
    QVERIFY(server.requests().isEmpty());
}

void TransportTest::theLimitOfARequest()
{
    const RawServer server;
    const APIService service(server.baseUrl());
    const Call calls[] = {pullStartup, requestUrl, submit};
    for (const Call& call : calls) {
        QCOMPARE(run(call, APIService(server.baseUrl(), 50ms)).description,
                 QStringLiteral("The service did not answer within 0.05 seconds."));
        settle(call(service), std::make_shared<std::optional<Ending>>());
    }
    QCOMPARE(standardTimeout, 60s);
    const auto timers = httpSession().findChildren<QTimer*>();
    QCOMPARE(std::count_if(timers.begin(), timers.end(),
                           [](const QTimer* timer) {
                               return timer->isActive() && timer->isSingleShot() &&
                                      timer->intervalAsDuration() == 60s &&
                                      timer->timerType() == Qt::PreciseTimer;
                           }),
             3);
    for (const QNetworkReply* reply : httpSession().findChildren<QNetworkReply*>()) {
        const bool posts = reply->operation() == QNetworkAccessManager::PostOperation;
        QCOMPARE(reply->findChildren<QIODevice*>().size(), posts ? 1 : 0); // a body goes with its reply
    }
}

void TransportTest::requestsAreAbandoned()
{
    const RawServer server;
    std::stop_source stop;
    const APIService service(server.baseUrl());
    const Call call = [&stop](const APIService& client) {
        return [](QCoro::Task<SASUrlResponse> request) -> QCoro::Task<QString> {
            const SASUrlResponse answer = co_await request;
            co_return answer.sasUrl;
        }(client.requestUploadURL(QStringLiteral("key"), QStringLiteral("f"), stop.get_token()));
    };
    const auto abandoned = [&](const std::function<void()>& abandon) {
        const auto ending = std::make_shared<std::optional<Ending>>();
        const qsizetype before = server.requests().size();
        settle(call(service), ending);
        const bool sent = QTest::qWaitFor([&] { return server.requests().size() > before; });
        abandon();
        return sent && !ending->has_value() // nothing resumes inside
                       && QTest::qWaitFor([&] { return ending->has_value(); })
                   ? (*ending)->description
                   : QStringLiteral("never or too early");
    };
    QCOMPARE(abandoned(endHttpSession),
             QStringLiteral("The request was abandoned because the program ended."));
    QCOMPARE(abandoned([&stop] { stop.request_stop(); }),
             QStringLiteral("The request was abandoned because the upload was canceled."));
}

void TransportTest::noRequestSharesItsConnection()
{
    const RawServer server({"HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n[]"}); // the connection could go on
    for (int times = 1; times <= 3; ++times) {
        run(pullStartup, APIService(server.baseUrl()));
        QCOMPARE(server.requests().size(), times);
        QCOMPARE(server.findChildren<QTcpSocket*>().size(), times);
    }
    QTRY_VERIFY(httpSession().children().isEmpty()); // the program lets go of each
    for (const QTcpSocket* socket : server.findChildren<QTcpSocket*>()) {
        QTRY_COMPARE(socket->state(), QAbstractSocket::UnconnectedState);
    }
}

QTEST_GUILESS_MAIN(TransportTest)
#include "tst_transport.moc"
