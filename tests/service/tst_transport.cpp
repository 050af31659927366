#include "local/LocalService.h"
#include "tests/service/Calls.h"
#include "tests/support/CapturedOutput.h"

#include <QFile>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>

using namespace tessary;
using namespace std::chrono_literals;
using local::Fault;
using local::LocalService;

/// Requests that get no answer, or may not go out.
class TransportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void transportFailures_data();
    void transportFailures();
    void theKeyStaysWithItsOrigin();
    void anUnknownCertificateIsRefused();
    void whatCannotBeSent();
    void aStopAbandonsARequest();
};

void TransportTest::transportFailures_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::addColumn<QString>("words");
    QTest::newRow("cut off") << Fault::brokenOff(20)
                             << QStringLiteral("closed before its answer was complete");
    QTest::newRow("no answer") << Fault::neverAnswered()
                               << QStringLiteral("did not answer within 0.5 seconds");
    QTest::newRow("redirect round and round")
        << Fault::redirected(LocalService::startupPath) << QStringLiteral("too many times");
    QTest::newRow("too large") << Fault::answered({200, QByteArray(70 * 1024 * 1024, ' ')})
                               << QStringLiteral("too large");
}

void TransportTest::transportFailures()
{
    QFETCH(Fault, fault);
    QFETCH(QString, words);
    LocalService server;
    if (fault.answer && !fault.answer->location.isEmpty()) {
        fault.answer->location = server.baseUrl().toLatin1() + fault.answer->location;
        for (int i = 0; i < 60; ++i) {
            server.addFault(LocalService::startupPath, fault);
        }
    }
    server.addFault(LocalService::startupPath, fault);
    const CapturedOutput output;
    const Ending ending = run(pullStartup, APIService(server.baseUrl(), 500ms));
    QCOMPARE(ending.domain, QStringLiteral("QNetworkReply"));
    QVERIFY2(ending.description.contains(words), qPrintable(ending.description));
    QCOMPARE(output.text(), QByteArray());
}

void TransportTest::theKeyStaysWithItsOrigin()
{
    LocalService server;
    const LocalService other;
    server.addFault(LocalService::startupPath,
                    Fault::redirected(other.baseUrl().toLatin1() + LocalService::startupPath));
    const Ending ending = run(pullStartup, APIService(server.baseUrl()));
    QVERIFY2(ending.description.contains(QLatin1StringView("another server")),
             qPrintable(ending.description));
    QVERIFY(other.requests().empty());
}

void TransportTest::anUnknownCertificateIsRefused()
{
    const auto contentOf = [](const char* file) {
        QFile pem(QFINDTESTDATA(file));
        return pem.open(QIODevice::ReadOnly) ? pem.readAll() : QByteArray();
    };
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificate(QSslCertificate(contentOf("unknown.pem")));
    configuration.setPrivateKey(QSslKey(contentOf("unknown.key"), QSsl::Ec));
    QSslServer server;
    server.setSslConfiguration(configuration);
    QVERIFY(server.listen(QHostAddress::LocalHost));
    const Ending ending =
        run(pullStartup, APIService(QStringLiteral("https://127.0.0.1:%1/api").arg(server.serverPort())));
    QVERIFY2(ending.description.contains(QLatin1StringView("No secure connection")),
             qPrintable(ending.description));
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
