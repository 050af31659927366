#include "tests/service/Calls.h"
#include "tests/support/CapturedOutput.h"
#include "tests/support/RawServer.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTest>

#include <algorithm>

using namespace tessary;

namespace {

const QByteArray workspaceBody = R"({"billing_date": 1, "container_name": "c", "created_at": "", "id": 1,
    "current_stream_hours": 1, "drm_enabled": 1, "encoding_enabled": 1, "encoding_seconds": 1, "has_8k": 1,
    "max_stream_hours": 1, "seats": 1, "stream_container_name": "", "streaming_enabled": 1, "user_ids": [],
    "whitelabel_key": "", "workspace_name": "w", "workspace_owner_id": ""})";
const QByteArray entryBody = R"({"id": 1, "video_url_left": "", "video_name": "", "workspace_id": 1,
    "perspective": 1, "is_3d": 1})";

/// The lines of a request's head, names in lower case, since that is how the toolkit may write them.
QByteArrayList headOf(const QByteArray& request)
{
    QByteArrayList lines = request.left(request.indexOf("\r\n\r\n")).replace('\r', "").split('\n');
    std::for_each(lines.begin() + 1, lines.end(), [](QByteArray& line) {
        const qsizetype name = line.indexOf(": ");
        line = line.left(name).toLower() + line.mid(name);
    });
    return lines;
}

/// A request as it came, but without the header lines that are the toolkit's own.
/// @param bare a request that holds nothing else
QByteArray without(const QByteArray& bare, const QByteArray& request)
{
    const QByteArrayList toolkits = headOf(bare);
    QByteArrayList lines = headOf(request);
    const auto isToolkits = [&toolkits](const QByteArray& line) {
        return toolkits.contains(line) || line.startsWith("content-length");
    };
    lines.erase(std::remove_if(lines.begin(), lines.end(), isToolkits), lines.end());
    return lines.join('\n') + "\n\n" + request.mid(request.indexOf("\r\n\r\n") + 4);
}

QCoro::Task<QString> pullWithoutKey(const APIService& client) // NOLINT: it outlives every call here
{
    co_await client.pullStartupInformation(QString());
    co_return QString();
}

} // namespace

class APIServiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void requestsAreExact();
    void endings_data();
    void endings();
};

void APIServiceTest::requestsAreExact()
{
    RawServer server({RawServer::answer("200 OK", "[]")});
    const APIService service(server.baseUrl());
    const CapturedOutput output;
    for (const Call& call : {Call(pullStartup), Call(pullWithoutKey), Call(requestUrl), Call(submit)}) {
        run(call, service);
    }
    QNetworkAccessManager toolkit;
    const QNetworkReply* bare = toolkit.get(QNetworkRequest(QUrl(server.baseUrl())));
    QTRY_VERIFY(bare->isFinished());
    QCOMPARE(server.requests().size(), 5);
    const auto sent = [&server](int index) {
        return without(server.requests().at(4), server.requests().at(index));
    };

    // Newer toolkits trim a header's value.
    const QByteArray spacedKey = QT_VERSION < QT_VERSION_CHECK(6, 8, 0) ? " a key " : "a key";
    const QByteArray get = "GET /api/upload-app/pull-startup-information HTTP/1.1\nx-tessary-appkey: ";
    QCOMPARE(sent(0), get + spacedKey + "\n\n");
    QCOMPARE(sent(1), get + "\n\n");

    QByteArrayList boundaries;
    const auto form = [&](int index, const QByteArray& path,
                          std::initializer_list<std::pair<QByteArray, QByteArray>> fields) {
        const QByteArray& request = server.requests().at(index);
        const QByteArray boundary = request.mid(request.indexOf("boundary=") + 9, 45);
        boundaries.append(boundary);
        QByteArray expected = "POST /api/upload-app/" + path + " HTTP/1.1\nx-tessary-appkey: key\n" +
                              "content-type: multipart/form-data; boundary=" + boundary + "\n\n";
        for (const auto& [name, value] : fields) {
            expected += "--" + boundary + "\r\nContent-Disposition: form-data; name=\"" + name +
                        "\"\r\n\r\n" + value + "\r\n";
        }
        return expected + "--" + boundary + "--\r\n";
    };
    QCOMPARE(sent(2), form(2, "direct-file-upload-sas", {{"uniqueFileName", "a\"b \xc3\xbc.mov"}}));
    QCOMPARE(sent(3), form(3, "submit-library-data",
                           {{"uploadedUrl", "L"},
                            {"uploadedUrlRight", "R"},
                            {"fileFormat3D", "Separate"},
                            {"is3D", "true"},
                            {"perspective", "-5"},
                            {"videoName", longName.toUtf8()}}));
    QVERIFY(boundaries.at(0) != boundaries.at(1));
}

void APIServiceTest::endings_data()
{
    QTest::addColumn<Call>("call");
    QTest::addColumn<QByteArray>("head"); // the answer's status, and more of its header
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("ending"); // the result, or the error's domain and code
    QTest::addColumn<QByteArray>("printed");

    const QByteArray page("<html>502</html>");
    const auto row = [](const char* name, const Call& call, const char* head, const QByteArray& body,
                        const char* ending, const QByteArray& printed) {
        QTest::newRow(name) << call << QByteArray(head) << body << QString::fromLatin1(ending) << printed;
    };
    const Call startup = pullStartup;
    const Call url = requestUrl;
    const Call registration = submit;
    const char* invalid = "tessary_macos_uploader.APIServiceError 0";
    for (const char* head :
         {"200 OK", "500 Broken", "400 No", "401 No", "401 No\r\nWWW-Authenticate: Basic realm=\"x\"",
          "407 No", "422 No", "300 Choose\r\nLocation: /elsewhere", "301 Moved",
          "302 Moved\r\nLocation: ", "307 Moved\r\nLocation: http://["}) {
        row(head, startup, head, workspaceBody, "ok", "");
    }
    row("no workspace: list", startup, "200 OK", "[]", "none", "");
    row("no workspace: key missing", startup, "401 No", R"({"error": "key"})", invalid,
        "Error deserializing JSON: noData\n");
    row("no workspace: page", startup, "502 Bad", page, invalid,
        "Error deserializing JSON: the answer is not valid JSON*");
    row("no workspace: nothing", startup, "404 None", "", invalid,
        "Error deserializing JSON: the answer is empty\n");
    row("no workspace: 64 MiB", startup, "200 OK", QByteArray(64 * 1024 * 1024, 'x'), invalid,
        "Error deserializing JSON: *");

    row("upload URL", url, "403 No", R"({"sasUrl": "x"})", "ok", "");
    row("no upload URL", url, "200 OK", page, "SASUrlResponse 0", "");

    row("entry", registration, "500 Broken", entryBody, "ok", "");
    row("entry, redirected nowhere", registration, "308 Moved", entryBody, "ok", "");
    row("no entry: list", registration, "200 OK", "[]", "tessary_macos_uploader.LibraryDataError 0",
        "Did not return the data correctly\n");
    row("no entry: key missing", registration, "200 OK", "{}", "tessary_macos_uploader.LibraryDataError 1",
        "Error deserializing JSON: noData\n");
    row("no entry: page", registration, "200 OK", page, "tessary_macos_uploader.LibraryDataError 1",
        "Error deserializing JSON: *");
}

void APIServiceTest::endings()
{
    QFETCH(Call, call);
    QFETCH(QByteArray, head);
    QFETCH(QByteArray, body);
    QFETCH(QString, ending);
    QFETCH(QByteArray, printed);

    const RawServer server({RawServer::answer(head, body)});
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

QTEST_GUILESS_MAIN(APIServiceTest)
#include "tst_apiservice.moc"
