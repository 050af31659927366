#include "app/tessary_macos_uploaderApp.h"
#include "standins/LocalService.h"
#include "tests/support/CapturedOutput.h"
#include "ui/keys/KeyForm.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace tessary;
using standins::LocalService;
using Screen = tessary_macos_uploaderApp::Screen;

namespace {

const QString studioKey = standins::localWorkspaces().at(0).key;

int modeOf(const QString& path)
{
    struct stat status = {};
    return stat(QFile::encodeName(path).constData(), &status) == 0 ? static_cast<int>(status.st_mode & 0777)
                                                                   : -1;
}

} // namespace

/// The key in its file, and what becomes of it where there is no room or no right to write it.
class StoredKeyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void keysSurviveInAFileOfTheirOwner();
    void brokenSettingsCountAsNoKey_data();
    void brokenSettingsCountAsNoKey();
    void anUnwritablePlaceKeepsTheKeyInMemory();
    void aFullPlaceKeepsTheOldFile();

private:
    [[nodiscard]] QString settings() const
    {
        return m_folder->filePath(QStringLiteral("config/settings.json"));
    }

    [[nodiscard]] Configuration configuration(const LocalService& service) const
    {
        return {service.baseUrl(), m_folder->filePath(QStringLiteral("config")), m_folder->path()};
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void StoredKeyTest::keysSurviveInAFileOfTheirOwner()
{
    QCOMPARE(StoredApiKey::standardFolder(),
             qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/tessary_macos_uploader"));
    const mode_t before = umask(0);
    const QString folder = m_folder->filePath(QStringLiteral("a/b/config"));
    const QString file = folder + QStringLiteral("/settings.json");
    const StoredApiKey store(folder);
    QCOMPARE(store.read(), QString());
    for (const QString& key : {QStringLiteral(" key\n\"ü\" "), QString(), QStringLiteral("key")}) {
        QVERIFY(store.write(key));
        QCOMPARE(store.read(), key);
        QCOMPARE(modeOf(file), 0600);
        QCOMPARE(modeOf(folder), 0700);
        for (const QString& opened : {file, folder}) { // by someone; the next time it is closed again
            QVERIFY(QFile::setPermissions(opened, QFile::permissions(opened) | QFile::ReadOther));
        }
    }
    QCOMPARE(QDir(folder).entryList(QDir::Files).size(), 1);
    QFile written(file);
    QVERIFY(written.open(QIODevice::ReadOnly));
    QCOMPARE(written.readAll().simplified(), QByteArray(R"({ "apiKey": "key" })"));
    umask(before);

    QVERIFY(written.remove() && QDir().mkdir(file));
    const CapturedOutput errors(stderr);
    QCOMPARE(store.read(), QString());
    QVERIFY(errors.text().startsWith("Could not read the settings file " + file.toUtf8() + ": "));
}

void StoredKeyTest::brokenSettingsCountAsNoKey_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("garbage") << QByteArray("\xff\x00\x01", 3);
    QTest::newRow("list") << QByteArray("[\"key\"]");
    QTest::newRow("number") << QByteArray(R"({"apiKey": 7})");
    QTest::newRow("other") << QByteArray(R"({"apikey": "x"})");
    QTest::newRow("long") << R"({"apiKey": ")" + QByteArray(1024 * 1024, 'k') + "\"}";
}

void StoredKeyTest::brokenSettingsCountAsNoKey()
{
    QFETCH(QByteArray, content);
    QDir(m_folder->path()).mkdir(QStringLiteral("config"));
    QFile file(settings());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();

    const LocalService service;
    const CapturedOutput errors(stderr);
    tessary_macos_uploaderApp app(configuration(service));
    QCOMPARE(app.screen(), Screen::Login);
    QCOMPARE(errors.text(), "Could not read the settings file " + settings().toUtf8() +
                                ": it is not a settings file of this program\n");
    app.sessionManager()->setStoredApiKey(QStringLiteral("key"));
    QCOMPARE(app.sessionManager()->storedApiKey(), QStringLiteral("key"));
}

void StoredKeyTest::anUnwritablePlaceKeepsTheKeyInMemory()
{
    QFile wall(m_folder->filePath(QStringLiteral("config"))); // a file where the folder should be
    QVERIFY(wall.open(QIODevice::WriteOnly));
    const LocalService service;
    tessary_macos_uploaderApp app(configuration(service));
    KeyForm form;
    form.setProperty("sessionManager", QVariant::fromValue(app.sessionManager()));
    form.setApiKey(studioKey);
    const CapturedOutput errors(stderr);
    form.submitKey();
    QCOMPARE(errors.text(), "Could not write the settings file " + settings().toUtf8() + ": " +
                                std::strerror(ENOTDIR) + '\n');
    QTRY_VERIFY(app.sessionManager()->hasWorkspace());
    QCOMPARE(app.sessionManager()->apiKey(), studioKey);
    QCOMPARE(app.sessionManager()->storedApiKey(), QString());
}

void StoredKeyTest::aFullPlaceKeepsTheOldFile()
{
    const LocalService service;
    tessary_macos_uploaderApp app(configuration(service));
    SessionManager& session = *app.sessionManager();
    session.setStoredApiKey(studioKey);
    const QString longKey(4000, u'k');
    session.setApiKey(longKey);

    const CapturedOutput errors(stderr);
    {
        // A file that grows beyond this is cut off as on a full disk.
        rlimit before = {};
        getrlimit(RLIMIT_FSIZE, &before);
        const auto atTheLimit = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit narrow{1000, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &narrow);
        session.setStoredApiKey(longKey);
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, atTheLimit);
    }
    QCOMPARE(session.apiKey(), longKey);
    QCOMPARE(session.storedApiKey(), studioKey);
    QCOMPARE(
        QDir(QFileInfo(settings()).path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        QStringList(QStringLiteral("settings.json")));
    QVERIFY(errors.text().startsWith("Could not write the settings file "));
}

QTEST_GUILESS_MAIN(StoredKeyTest)
#include "tst_storedkey.moc"
