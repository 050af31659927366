#include "local/LocalService.h"
#include "service/APIService.h"
#include "service/Error.h"
#include "tests/support/CapturedOutput.h"

#include <QCoro/QCoroTask>
#include <QFile>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QTest>

#include <functional>

using namespace tessary;
using namespace std::chrono_literals;
using local::Answer;
using local::Fault;
using local::LocalService;

namespace {

/// How a call ended: "ok", "none", or the error.
struct Ending
{
    QString result;
    QString domain;
    int code = -1;
    QString description;
};

using Call = std::function<QCoro::Task<QString>(const APIService&)>;

QCoro::Task<QString> pullStartup(const APIService& service) // NOLINT: the service outlives every call here
{
    const std::optional<Workspace> workspace =
        co_await service.pullStartupInformation(QStringLiteral(" a key "));
    co_return workspace ? QStringLiteral("ok") : QStringLiteral("none");
}

QCoro::Task<QString> requestUrl(const APIService& service) // NOLINT: as above
{
    const SASUrlResponse answer =
        co_await service.requestUploadURL(QStringLiteral("key"), QString::fromUtf8("a\"b ü.mov"), {});
    co_return answer.sasUrl.isEmpty() ? QStringLiteral("none") : QStringLiteral("ok");
}

QCoro::Task<QString> submit(const APIService& service) // NOLINT: as above
{
    const LibraryEntry entry =
        co_await service.submitLibraryData(QStringLiteral("key"), QStringLiteral("L"), QStringLiteral("R"),
                                           QStringLiteral("Separate"), true, -5, QStringLiteral("N"));
    co_return entry.fileFormat3D == QLatin1StringView("Separate") ? QStringLiteral("ok")
                                                                  : QStringLiteral("none");
}

QCoro::Task<> settle(QCoro::Task<QString> call, std::shared_ptr<std::optional<Ending>> ending)
{
    try {
        const QString result = co_await call;
        *ending = Ending{result, {}, -1, {}};
    } catch (const Error& error) {
        *ending = Ending{QStringLiteral("error"), error.domain(), error.code(), error.description()};
    }
}

Ending run(const Call& call, const APIService& service)
{
    const auto ending = std::make_shared<std::optional<Ending>>();
    settle(call(service), ending);
    return QTest::qWaitFor([&ending] { return ending->has_value(); }, 20'000) ? **ending : Ending{};
}

Fault answered(int status, const QByteArray& body)
{
    return Fault::answered(Answer{status, body});
}

const QByteArray workspaceBody = R"({"billing_date": 1, "container_name": "c", "created_at": "", "id": 1,
    "current_stream_hours": 1, "drm_enabled": 1, "encoding_enabled": 1, "encoding_seconds": 1, "has_8k": 1,
    "max_stream_hours": 1, "seats": 1, "stream_container_name": "", "streaming_enabled": 1, "user_ids": [],
    "whitelabel_key": "", "workspace_name": "w", "workspace_owner_id": ""})";
const QByteArray entryBody = R"({"id": 1, "video_url_left": "", "video_name": "", "workspace_id": 1,
    "perspective": 1, "is_3d": 1})";

} // namespace

class APIServiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void requestsAreExact();
    void endings_data();
    void endings();
    void transportFailures_data();
    void transportFailures();
    void theKeyStaysWithItsOrigin();
    void anUnknownCertificateIsRefused();
    void anEmptyKeyIsSentLikeAnyOther();
    void whatCannotBeSent();
    void aStopAbandonsARequest();
};

void APIServiceTest::requestsAreExact()
{
    LocalService server;
    for (const char* path :
         {LocalService::startupPath, LocalService::uploadUrlPath, LocalService::registrationPath}) {
        server.addFault(path, answered(200, "[]"));
    }
    const APIService service(server.baseUrl());
    const CapturedOutput output;
    run(pullStartup, service);
    run(requestUrl, service);
    run(submit, service);
    QCOMPARE(server.requests().size(), std::size_t{3});

    const local::ReceivedRequest& startup = server.requests().at(0);
    QCOMPARE(startup.method, QByteArray("GET"));
    QCOMPARE(startup.path, QString::fromLatin1(LocalService::startupPath));
    QCOMPARE(startup.body, QByteArray());

    const QByteArray formType("multipart/form-data; boundary=");
    const local::ReceivedRequest& upload = server.requests().at(1);
    QVERIFY(upload.header("Content-Type").startsWith(formType));
    QByteArray line = "--" + upload.header("Content-Type").mid(formType.size());
    QCOMPARE(upload.body, line + "\r\nContent-Disposition: form-data; name=\"uniqueFileName\"\r\n\r\n" +
                              "a\"b \xc3\xbc.mov\r\n" + line + "--\r\n");

    for (const local::ReceivedRequest& request : server.requests()) {
        QCOMPARE(request.method, QByteArray(request.path.endsWith(u"information") ? "GET" : "POST"));
        QVERIFY(!request.header("X-TESSARY-APPKEY").isEmpty());
    }
    QVERIFY(startup.header("Content-Type").isEmpty());

    const local::ReceivedRequest& registration = server.requests().at(2);
    line = "--" + registration.header("Content-Type").mid(formType.size());
    QByteArray expected;
    for (const auto& [name, value] :
         std::initializer_list<std::pair<QByteArray, QByteArray>>{{"uploadedUrl", "L"},
                                                                  {"uploadedUrlRight", "R"},
                                                                  {"fileFormat3D", "Separate"},
                                                                  {"is3D", "true"},
                                                                  {"perspective", "-5"},
                                                                  {"videoName", "N"}}) {
        expected +=
            line + "\r\nContent-Disposition: form-data; name=\"" + name + "\"\r\n\r\n" + value + "\r\n";
    }
    QCOMPARE(registration.body, expected + line + "--\r\n");
    QCOMPARE(registration.method, QByteArray("POST"));
    QCOMPARE(registration.header("X-TESSARY-APPKEY"), QByteArray("key"));
    QVERIFY(registration.header("Content-Type") != upload.header("Content-Type"));
}

void APIServiceTest::endings_data()
{
    QTest::addColumn<Call>("call");
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("ending"); // the result, or the error's domain and code
    QTest::addColumn<QByteArray>("printed");

    const QByteArray page("<html>502</html>");
    const auto row = [](const char* name, const Call& call, const char* path, int status,
                        const QByteArray& body, const char* ending, const QByteArray& printed) {
        QTest::newRow(name) << call << QByteArray(path) << status << body << QString::fromLatin1(ending)
                            << printed;
    };
    const Call startup = pullStartup;
    const Call url = requestUrl;
    const Call registration = submit;
    const char* invalid = "tessary_macos_uploader.APIServiceError 0";
    row("workspace", startup, LocalService::startupPath, 200, workspaceBody, "ok", "");
    row("workspace, bad status", startup, LocalService::startupPath, 500, workspaceBody, "ok", "");
    row("workspace, refused", startup, LocalService::startupPath, 401, workspaceBody, "ok", "");
    row("no workspace: list", startup, LocalService::startupPath, 200, "[]", "none", "");
    row("no workspace: key missing", startup, LocalService::startupPath, 401, R"({"error": "key"})", invalid,
        "Error deserializing JSON: noData\n");
    row("no workspace: page", startup, LocalService::startupPath, 502, page, invalid,
        "Error deserializing JSON: the answer is not valid JSON*");
    row("no workspace: nothing", startup, LocalService::startupPath, 404, "", invalid,
        "Error deserializing JSON: the answer is empty\n");
    row("no workspace: text", startup, LocalService::startupPath, 200, "\"x\"", invalid,
        "Error deserializing JSON: *");
    row("no workspace: 50 MB", startup, LocalService::startupPath, 200, QByteArray(50'000'000, 'x'), invalid,
        "Error deserializing JSON: *");

    row("upload URL", url, LocalService::uploadUrlPath, 403, R"({"sasUrl": "x"})", "ok", "");
    row("no upload URL", url, LocalService::uploadUrlPath, 200, page, "SASUrlResponse 0", "");

    row("entry", registration, LocalService::registrationPath, 500, entryBody, "ok", "");
    row("no entry: list", registration, LocalService::registrationPath, 200, "[]",
        "tessary_macos_uploader.LibraryDataError 0", "Did not return the data correctly\n");
    row("no entry: key missing", registration, LocalService::registrationPath, 200, "{}",
        "tessary_macos_uploader.LibraryDataError 1", "Error deserializing JSON: noData\n");
    row("no entry: page", registration, LocalService::registrationPath, 200, page,
        "tessary_macos_uploader.LibraryDataError 1", "Error deserializing JSON: *");
}

void APIServiceTest::endings()
{
    QFETCH(Call, call);
    QFETCH(QByteArray, path);
    QFETCH(int, status);
    QFETCH(QByteArray, body);
    QFETCH(QString, ending);
    QFETCH(QByteArray, printed);

    LocalService server;
    server.addFault(path.constData(), answered(status, body));
    const CapturedOutput output;
    const Ending actual = run(call, APIService(server.baseUrl()));
    const QString shown = actual.result == QLatin1StringView("error")
                              ? actual.domain + u' ' + QString::number(actual.code)
                              : actual.result;
    QCOMPARE(shown, ending);
    if (printed.endsWith('*')) {
        QVERIFY2(output.text().startsWith(printed.chopped(1)), output.text().constData());
        QCOMPARE(output.text().count('\n'), 1);
    } else {
        QCOMPARE(output.text(), printed);
    }
}

void APIServiceTest::transportFailures_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::addColumn<QString>("words");
    QTest::newRow("cut off") << Fault::brokenOff(20)
                             << QStringLiteral("closed before its answer was complete");
    QTest::newRow("no answer") << Fault::neverAnswered()
                               << QStringLiteral("did not answer within 0.5 seconds");
    QTest::newRow("redirect round and round")
        << Fault::redirected(LocalService::startupPath) << QStringLiteral("too many times");
    QTest::newRow("too large") << answered(200, QByteArray(70 * 1024 * 1024, ' '))
                               << QStringLiteral("too large");
}

void APIServiceTest::transportFailures()
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

void APIServiceTest::theKeyStaysWithItsOrigin()
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

void APIServiceTest::anUnknownCertificateIsRefused()
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

void APIServiceTest::anEmptyKeyIsSentLikeAnyOther()
{
    LocalService server;
    const CapturedOutput output;
    const auto withoutKey =
        [](const APIService& client) -> QCoro::Task<QString> { // NOLINT: it captures nothing
        co_await client.pullStartupInformation(QString());
        co_return QString();
    };
    run(withoutKey, APIService(server.baseUrl()));
    const auto& headers = server.requests().at(0).headers;
    QVERIFY(std::any_of(headers.begin(), headers.end(), [](const auto& header) {
        return header.first.compare("X-TESSARY-APPKEY", Qt::CaseInsensitive) == 0 && header.second.isEmpty();
    }));
}

void APIServiceTest::whatCannotBeSent()
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

void APIServiceTest::aStopAbandonsARequest()
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

QTEST_GUILESS_MAIN(APIServiceTest)
#include "tst_apiservice.moc"
