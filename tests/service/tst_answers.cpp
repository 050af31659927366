#include "service/Error.h"
#include "service/JsonReading.h"
#include "service/LibraryEntry.h"
#include "service/SASUrlResponse.h"
#include "service/Workspace.h"

#include <QJsonArray>
#include <QRegularExpression>
#include <QTest>

#include <limits>
#include <stdexcept>

using namespace tessary;

namespace {

/// As the service sends it. No two values are equal, but for the switches, which are all off.
QJsonObject completeWorkspace()
{
    return QJsonDocument::fromJson(R"({"billing_date": 1700000000, "container_name": "videos",
        "created_at": "soon", "current_stream_hours": 1, "drm_enabled": 0, "encoding_enabled": false,
        "encoding_seconds": 2, "has_8k": 2, "id": 7, "max_stream_hours": 3, "seats": 4,
        "stream_container_name": "streams", "streaming_enabled": -1, "user_ids": ["a", "b"],
        "whitelabel_key": "", "workspace_name": "Studio", "workspace_owner_id": "o"})")
        .object();
}

/// The same in the record's own form.
QJsonObject completeRecord()
{
    return QJsonDocument::fromJson(R"({"billingDate": 1700000000, "containerName": "videos",
        "createdAt": "soon", "currentStreamHours": 1, "drmEnabled": false, "encodingEnabled": false,
        "encodingSeconds": 2, "has8k": false, "id": 7, "maxStreamHours": 3, "seats": 4,
        "streamContainerName": "streams", "streamingEnabled": false, "userIds": ["a", "b"],
        "whitelabelKey": "", "workspaceName": "Studio", "workspaceOwnerId": "o"})")
        .object();
}

Workspace workspaceOf(const QJsonObject& answer)
{
    return Workspace::fromAnswer(QJsonDocument(answer).toJson()).value();
}

LibraryEntry entryOf(const QJsonObject& answer)
{
    return LibraryEntry::fromAnswer(QJsonDocument(answer).toJson(), QStringLiteral("TB"));
}

/// What a reader finds; empty when it refuses.
template <typename Reader>
QString found(const Reader& read)
{
    try {
        return QString::number(read());
    } catch (const std::exception&) {
        return {};
    }
}

QJsonObject with(QJsonObject object, const QString& key, const QJsonValue& value)
{
    object.insert(key, value);
    return object;
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
    void workspacesAreReadWhole();
    void switchesAreApart();
    void everyKeyIsRequired();
    void values_data();
    void values();
    void uploadUrl_data();
    void uploadUrl();
};

void AnswersTest::workspacesAreReadWhole()
{
    const Workspace expected{1700000000,
                             QStringLiteral("videos"),
                             QStringLiteral("soon"),
                             1,
                             false,
                             false,
                             2,
                             false,
                             7,
                             3,
                             4,
                             QStringLiteral("streams"),
                             false,
                             {QStringLiteral("a"), QStringLiteral("b")},
                             QString(),
                             QStringLiteral("Studio"),
                             QStringLiteral("o")};
    QCOMPARE(expected.toJson(), completeRecord());
    QCOMPARE(workspaceOf(completeWorkspace()).toJson(), completeRecord());
    QCOMPARE(Workspace::fromJson(completeRecord())->toJson(), completeRecord());

    QJsonObject least = completeRecord();
    least.remove(QStringLiteral("billingDate"));
    least.remove(QStringLiteral("whitelabelKey"));
    QCOMPARE(Workspace::fromJson(least)->toJson(), least);
    QCOMPARE(Workspace::fromJson(with(least, QStringLiteral("billingDate"), {}))->toJson(), least);
    QVERIFY(!Workspace::fromJson(with(least, QStringLiteral("billingDate"), QStringLiteral("1"))));
}

void AnswersTest::switchesAreApart()
{
    const std::initializer_list<std::tuple<QString, QString, bool Workspace::*>> switches{
        {QStringLiteral("drm_enabled"), QStringLiteral("drmEnabled"), &Workspace::drmEnabled},
        {QStringLiteral("encoding_enabled"), QStringLiteral("encodingEnabled"), &Workspace::encodingEnabled},
        {QStringLiteral("has_8k"), QStringLiteral("has8k"), &Workspace::has8k},
        {QStringLiteral("streaming_enabled"), QStringLiteral("streamingEnabled"),
         &Workspace::streamingEnabled}};
    for (const auto& [key, name, member] : switches) {
        const Workspace workspace = workspaceOf(with(completeWorkspace(), key, 1));
        QVERIFY2(workspace.*member, qPrintable(key));
        const QJsonObject record = with(completeRecord(), name, true);
        QCOMPARE(workspace.toJson(), record);
        QCOMPARE(Workspace::fromJson(record)->toJson(), record);
    }
}

void AnswersTest::everyKeyIsRequired()
{
    const auto reads = [](const auto& reader, QJsonObject object, const QString& key) {
        const bool null = !found([&] { return reader(with(object, key, QJsonValue::Null)).id; }).isEmpty();
        object.remove(key);
        return null || !found([&] { return reader(object).id; }).isEmpty();
    };
    for (const QString& key : completeWorkspace().keys()) {
        QVERIFY2(!reads(workspaceOf, completeWorkspace(), key), qPrintable(key));
    }
    const LibraryEntry entry = entryOf(completeEntry());
    QCOMPARE(entry.id, 9);
    QCOMPARE(entry.videoUrlLeft, QStringLiteral("u"));
    QCOMPARE(entry.videoName, QStringLiteral("n"));
    QCOMPARE(entry.workspaceId, 7);
    QCOMPARE(entry.perspective, 180);
    QCOMPARE(entry.fileFormat3D, QStringLiteral("TB"));
    QVERIFY(entry.is3D);
    for (const QString& key : completeEntry().keys()) {
        QCOMPARE(reads(entryOf, completeEntry(), key), key == QLatin1StringView("extra"));
    }
    for (const QString& key : completeRecord().keys()) {
        QJsonObject without = completeRecord();
        without.remove(key);
        const bool optional =
            key == QLatin1StringView("billingDate") || key == QLatin1StringView("whitelabelKey");
        QCOMPARE(Workspace::fromJson(without).has_value(), optional);
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

    const auto reads = [&json](QJsonObject (*complete)(), const char* key, auto reader, auto member) {
        return found([&] { return reader(with(complete(), QLatin1StringView(key), json)).*member; });
    };
    const auto recordOf = [](const QJsonObject& object) { return Workspace::fromJson(object).value(); };
    QCOMPARE(reads(completeWorkspace, "seats", workspaceOf, &Workspace::seats), workspaceInteger);
    QCOMPARE(reads(completeWorkspace, "has_8k", workspaceOf, &Workspace::has8k), workspaceSwitch);
    QCOMPARE(reads(completeRecord, "seats", recordOf, &Workspace::seats), entryInteger);
    QCOMPARE(reads(completeRecord, "has8k", recordOf, &Workspace::has8k),
             json.isBool() ? QString::number(json.toBool()) : QString());
    QCOMPARE(reads(completeEntry, "workspace_id", entryOf, &LibraryEntry::workspaceId), entryInteger);
    QCOMPARE(reads(completeEntry, "is_3d", entryOf, &LibraryEntry::is3D), entryFlag);
}

void AnswersTest::uploadUrl_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("sasUrl"); // or, with a '!' in front, how the refusal goes on
    QTest::newRow("plain") << QByteArray(R"({"sasUrl": "https://x/y?sig=1%2B", "more": 1})")
                           << QStringLiteral("https://x/y?sig=1%2B");
    QTest::newRow("any text") << QByteArray(R"({"sasUrl": "not a url"})") << QStringLiteral("not a url");
    QTest::newRow("null") << QByteArray(R"({"sasUrl": null})")
                          << QStringLiteral("!\"sasUrl\" is not a text.");
    QTest::newRow("missing") << QByteArray(R"({"sasurl": "x"})") << QStringLiteral("!\"sasUrl\" is missing.");
    QTest::newRow("list") << QByteArray("[]") << QStringLiteral("!the answer is a list, not an object.");
    QTest::newRow("scalar") << QByteArray(R"("x")") << QStringLiteral("!the answer is not valid JSON.");
    QTest::newRow("page") << QByteArray("<html>502 secret</html>")
                          << QStringLiteral("!the answer is not valid JSON.");
    QTest::newRow("empty") << QByteArray() << QStringLiteral("!the answer is empty.");
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
        static const QRegularExpression place(QStringLiteral(" \\([a-z ]+ at byte \\d+ of \\d+\\)"));
        QCOMPARE(QString(error.description()).remove(place),
                 QStringLiteral("The service did not answer with an upload URL: ") + sasUrl.mid(1));
        return;
    }
    QCOMPARE(result, sasUrl);
}

QTEST_APPLESS_MAIN(AnswersTest)
#include "tst_answers.moc"
