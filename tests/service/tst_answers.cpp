#include "service/Error.h"
#include "service/JsonReading.h"
#include "service/LibraryEntry.h"
#include "service/MultipartForm.h"
#include "service/SASUrlResponse.h"
#include "service/VideoFormat.h"
#include "service/Workspace.h"

#include <QJsonArray>
#include <QRegularExpression>
#include <QTest>

#include <limits>

using namespace tessary;

namespace {

QJsonObject completeWorkspace()
{
    return QJsonDocument::fromJson(
               R"({"billing_date": 1700000000, "container_name": "videos", "created_at": "soon",
        "current_stream_hours": 1, "drm_enabled": 1, "encoding_enabled": true, "encoding_seconds": 2, "has_8k": 0,
        "id": 7, "max_stream_hours": 3, "seats": 4, "stream_container_name": "streams", "streaming_enabled": false,
        "user_ids": ["a", "b"], "whitelabel_key": "", "workspace_name": "Studio", "workspace_owner_id": "o"})")
        .object();
}

QJsonObject completeEntry()
{
    return QJsonDocument::fromJson(R"({"id": 9, "video_url_left": "u", "video_name": "n", "workspace_id": 7,
                                       "perspective": 180, "is_3d": true, "extra": null})")
        .object();
}

} // namespace

class AnswersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void completeAnswersAreReadWhole();
    void everyKeyIsRequired();
    void values_data();
    void values();
    void uploadUrl_data();
    void uploadUrl();
    void formats_data();
    void formats();
    void perspectives_data();
    void perspectives();
    void formFields();
    void errorsNameTheirTypeAndCase();
};

void AnswersTest::completeAnswersAreReadWhole()
{
    const auto workspace = Workspace::fromStartupInformation(completeWorkspace());
    QVERIFY(workspace);
    QCOMPARE(workspace->billingDate, 1700000000);
    QCOMPARE(workspace->userIds, (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    QCOMPARE(workspace->workspaceName, QStringLiteral("Studio"));
    QCOMPARE(workspace->whitelabelKey, QString());
    QVERIFY(workspace->drmEnabled && workspace->encodingEnabled);
    QVERIFY(!workspace->has8k && !workspace->streamingEnabled);

    const auto entry = LibraryEntry::fromAnswer(completeEntry(), QStringLiteral("TB"));
    QVERIFY(entry);
    QCOMPARE(entry->id, 9);
    QCOMPARE(entry->fileFormat3D, QStringLiteral("TB"));
    QVERIFY(entry->is3D);
}

void AnswersTest::everyKeyIsRequired()
{
    const QJsonObject workspace = completeWorkspace();
    QCOMPARE(workspace.size(), 17);
    for (const QString& key : workspace.keys()) {
        QJsonObject without = workspace;
        without.remove(key);
        QVERIFY2(!Workspace::fromStartupInformation(without), qPrintable(key));
        without.insert(key, QJsonValue::Null);
        QVERIFY2(!Workspace::fromStartupInformation(without), qPrintable(key));
    }
    for (const char* key : {"id", "video_url_left", "video_name", "workspace_id", "perspective", "is_3d"}) {
        QJsonObject without = completeEntry();
        without.remove(QLatin1StringView(key));
        QVERIFY2(!LibraryEntry::fromAnswer(without, {}), key);
    }
}

void AnswersTest::values_data()
{
    QTest::addColumn<QByteArray>("value");
    // What the value reads as for each kind of key; empty where it is refused.
    QTest::addColumn<QString>("workspaceInteger");
    QTest::addColumn<QString>("workspaceSwitch");
    QTest::addColumn<QString>("entryInteger");
    QTest::addColumn<QString>("entryFlag");

    const auto row = [](const char* value, const char* workspaceInteger, const char* workspaceSwitch,
                        const char* entryInteger, const char* entryFlag) {
        QTest::newRow(value) << QByteArray(value) << QString::fromLatin1(workspaceInteger)
                             << QString::fromLatin1(workspaceSwitch) << QString::fromLatin1(entryInteger)
                             << QString::fromLatin1(entryFlag);
    };
    row("1", "1", "1", "1", "1");
    row("0", "0", "0", "0", "0");
    row("true", "1", "1", "", "1");
    row("false", "0", "0", "", "0");
    row("2", "2", "0", "2", "");
    row("-1", "-1", "0", "-1", "");
    row("7.0", "7", "0", "7", "");
    row("7.5", "", "", "", "");
    row("9223372036854775807", "9223372036854775807", "0", "9223372036854775807", "");
    row("9223372036854775808", "", "", "", "");
    row("1e300", "", "", "", "");
    row("\"1\"", "", "", "", "");
    row("null", "", "", "", "");
    row("[1]", "", "", "", "");
}

void AnswersTest::values()
{
    QFETCH(QByteArray, value);
    QFETCH(QString, workspaceInteger);
    QFETCH(QString, workspaceSwitch);
    QFETCH(QString, entryInteger);
    QFETCH(QString, entryFlag);
    const QJsonValue json = QJsonDocument::fromJson('[' + value + ']').array().at(0);

    const auto read = [&json](QJsonObject object, const char* key, auto parse, auto show) {
        object.insert(QLatin1StringView(key), json);
        const auto record = parse(object);
        return record ? QString::number(show(*record)) : QString();
    };
    const auto parseEntry = [](const QJsonObject& object) { return LibraryEntry::fromAnswer(object, {}); };
    QCOMPARE(
        read(completeWorkspace(), "seats", Workspace::fromStartupInformation, std::mem_fn(&Workspace::seats)),
        workspaceInteger);
    QCOMPARE(read(completeWorkspace(), "has_8k", Workspace::fromStartupInformation,
                  std::mem_fn(&Workspace::has8k)),
             workspaceSwitch);
    QCOMPARE(read(completeEntry(), "workspace_id", parseEntry, std::mem_fn(&LibraryEntry::workspaceId)),
             entryInteger);
    QCOMPARE(read(completeEntry(), "is_3d", parseEntry, std::mem_fn(&LibraryEntry::is3D)), entryFlag);
}

void AnswersTest::uploadUrl_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("sasUrl"); // or, with a '!' in front, a word of the refusal
    QTest::newRow("plain") << QByteArray(R"({"sasUrl": "https://x/y?sig=1%2B", "more": 1})")
                           << QStringLiteral("https://x/y?sig=1%2B");
    QTest::newRow("any text") << QByteArray(R"({"sasUrl": "not a url"})") << QStringLiteral("not a url");
    QTest::newRow("null") << QByteArray(R"({"sasUrl": null})") << QStringLiteral("!not a text");
    QTest::newRow("missing") << QByteArray(R"({"sasurl": "x"})") << QStringLiteral("!missing");
    QTest::newRow("list") << QByteArray("[]") << QStringLiteral("!list");
    QTest::newRow("scalar") << QByteArray(R"("x")") << QStringLiteral("!not valid JSON");
    QTest::newRow("page") << QByteArray("<html>502 secret</html>") << QStringLiteral("!not valid JSON");
    QTest::newRow("empty") << QByteArray() << QStringLiteral("!empty");
}

void AnswersTest::uploadUrl()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, sasUrl);
    QString result;
    try {
        result = SASUrlResponse::fromAnswer(body).sasUrl;
    } catch (const Error& error) {
        QVERIFY(sasUrl.startsWith(u'!'));
        QVERIFY2(error.description().contains(sasUrl.mid(1)), qPrintable(error.description()));
        QVERIFY(!error.description().contains(QLatin1StringView("secret")));
        return;
    }
    QCOMPARE(result, sasUrl);
}

void AnswersTest::formats_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<bool>("is3D");
    const auto row = [](const char* name, const char* code, bool is3D) {
        QTest::newRow(name) << QString::fromLatin1(code) << is3D;
    };
    row("2D", "2D", false);
    row("Stereoscopic Left/Right", "SBS", true);
    row("Stereoscopic Top/Bottom", "TB", true);
    row("Spatial (MV-HEVC)", "Spatial", true);
    row("Apple Immersive Video (.aivu)", "AIV", true);
    row("Separate", "Separate", true);
    row("2d", "SBS", true);
    row("", "SBS", true);
}

void AnswersTest::formats()
{
    QFETCH(QString, code);
    QFETCH(bool, is3D);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    QCOMPARE(VideoFormat::fileFormatCode(name), code);
    QCOMPARE(VideoFormat::is3D(name), is3D);
}

void AnswersTest::perspectives_data()
{
    QTest::addColumn<qint64>("number");
    const auto row = [](const char* text, qint64 number) { QTest::newRow(text) << number; };
    row("60", 60);
    row("360", 360);
    row("+5", 5);
    row("-5", -5);
    row("007", 7);
    row("-9223372036854775808", std::numeric_limits<qint64>::min());
    for (const char* unreadable :
         {"", "+", "+-5", "++5", " 60", "60 ", "60.0", "6e1", "9223372036854775808", "６０"}) {
        row(unreadable, 180);
    }
}

void AnswersTest::perspectives()
{
    QFETCH(qint64, number);
    QCOMPARE(VideoFormat::perspectiveNumber(QString::fromUtf8(QTest::currentDataTag())), number);
}

void AnswersTest::formFields()
{
    const QByteArray boundary = makeBoundary();
    const QRegularExpression form(QStringLiteral("^Boundary-[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$"));
    QVERIFY(form.match(QString::fromLatin1(boundary)).hasMatch());
    QVERIFY(makeBoundary() != boundary);

    QByteArray body;
    appendFormField(QStringLiteral("name"), QString::fromUtf8("a\"b\r\nü"), body, "B");
    appendClosingLine(body, "B");
    QCOMPARE(body, QByteArray(
                       "--B\r\nContent-Disposition: form-data; name=\"name\"\r\n\r\na\"b\r\nü\r\n--B--\r\n"));
}

void AnswersTest::errorsNameTheirTypeAndCase()
{
    const Error error = toError(LibraryDataError::insertError);
    QCOMPARE(error.domain(), QStringLiteral("tessary_macos_uploader.LibraryDataError"));
    QCOMPARE(error.code(), 1);
    QCOMPARE(toError(APIServiceError::invalidURL).description(),
             QStringLiteral(
                 "The operation couldn’t be completed. (tessary_macos_uploader.APIServiceError error 0.)"));
}

QTEST_APPLESS_MAIN(AnswersTest)
#include "tst_answers.moc"
