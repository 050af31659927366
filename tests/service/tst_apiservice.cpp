#include "local/LocalService.h"
#include "tests/service/Calls.h"
#include "tests/support/CapturedOutput.h"

#include <QTest>

using namespace tessary;
using local::Answer;
using local::Fault;
using local::LocalService;

namespace {

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
    void anEmptyKeyIsSentLikeAnyOther();
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

QTEST_GUILESS_MAIN(APIServiceTest)
#include "tst_apiservice.moc"
