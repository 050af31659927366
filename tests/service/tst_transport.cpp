#include "local/LocalService.h"
#include "tests/service/Calls.h"
#include "tests/support/CapturedOutput.h"

using namespace tessary;
using local::Fault;
using local::LocalService;

/// Requests that get no answer, or may not go out.
class TransportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anAnswerTooLarge();
    void theKeyStaysWithItsOrigin();
    void whatCannotBeSent();
    void aStopAbandonsARequest();
};

void TransportTest::anAnswerTooLarge()
{
    LocalService server;
    server.addFault(LocalService::startupPath, Fault::answered({200, QByteArray(70 * 1024 * 1024, ' ')}));
    const CapturedOutput output;
    const Ending ending = run(pullStartup, APIService(server.baseUrl()));
    QCOMPARE(ending.domain, QStringLiteral("QNetworkReply"));
    QVERIFY2(ending.description.contains(QLatin1StringView("too large")), qPrintable(ending.description));
    QCOMPARE(output.text(), QByteArray());
}

void TransportTest::theKeyStaysWithItsOrigin()
{
    LocalService server;
    const LocalService other;
    server.addFault(LocalService::startupPath,
                    Fault::redirected(302, other.baseUrl().toLatin1() + LocalService::startupPath));
    const Ending ending = run(pullStartup, APIService(server.baseUrl()));
    QVERIFY2(ending.description.contains(QLatin1StringView("another server")),
             qPrintable(ending.description));
    QVERIFY(other.requests().empty());
}

void TransportTest::whatCannotBeSent()
{
    LocalService server;
    QCOMPARE(run(pullStartup, APIService(QStringLiteral("http://no host/api"))).domain,
             QStringLiteral("tessary_macos_uploader.APIServiceError"));
    const QString down = QStringLiteral("http://127.0.0.1:9/api");
    QVERIFY(run(pullStartup, APIService(down)).description.contains(QLatin1StringView("refused")));

    const APIService service(server.baseUrl());
    const auto smuggle = [](const APIService& client) -> QCoro::Task<QString> { // NOLINT: it captures nothing
        co_await client.pullStartupInformation(QStringLiteral("key\r\nX-Other: 1"));
        co_return QString();
    };
    QVERIFY(run(smuggle, service).description.contains(QLatin1StringView("line break")));
    QVERIFY(server.requests().empty());
}

void TransportTest::aStopAbandonsARequest()
{
    LocalService server;
    server.addFault(LocalService::uploadUrlPath, Fault::neverAnswered());
    std::stop_source stop;
    const APIService service(server.baseUrl());
    const auto ending = std::make_shared<std::optional<Ending>>();
    const Call call = [&stop](const APIService& client) {
        return [](QCoro::Task<SASUrlResponse> request) -> QCoro::Task<QString> {
            const SASUrlResponse answer = co_await request;
            co_return answer.sasUrl;
        }(client.requestUploadURL(QStringLiteral("key"), QStringLiteral("f"), stop.get_token()));
    };
    settle(call(service), ending);
    QTRY_COMPARE(server.requests().size(), std::size_t{1});
    stop.request_stop();
    QVERIFY(!ending->has_value()); // nothing resumes inside the stop
    QTRY_VERIFY(ending->has_value());
    QVERIFY((*ending)->description.contains(QLatin1StringView("abandoned")));
}

QTEST_GUILESS_MAIN(TransportTest)
#include "tst_transport.moc"
