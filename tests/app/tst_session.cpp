#include "app/KeyForm.h"
#include "app/tessary_macos_uploaderApp.h"
#include "local/LocalService.h"
#include "tests/support/CapturedOutput.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace tessary;
using local::Fault;
using local::LocalService;
using Screen = tessary_macos_uploaderApp::Screen;

namespace {

const QString studioKey = local::localWorkspaces().at(0).key;
const QString archiveKey = local::localWorkspaces().at(1).key;

int modeOf(const QString& path)
{
    struct stat status = {};
    return stat(QFile::encodeName(path).constData(), &status) == 0 ? static_cast<int>(status.st_mode & 0777)
                                                                   : -1;
}

} // namespace

class SessionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void keysSurviveInAFileOfTheirOwner();
    void brokenSettingsCountAsNoKey_data();
    void brokenSettingsCountAsNoKey();
    void anUnwritablePlaceKeepsTheKeyInMemory();
    void startUp_data();
    void startUp();
    void signingIn();
    void changingTheKey_data();
    void changingTheKey();
    void theLaterCheckWins();
    void aFormMayGoBeforeItsTaskRuns();

private:
    [[nodiscard]] QString settings() const
    {
        return m_folder->filePath(QStringLiteral("config/settings.json"));
    }

    [[nodiscard]] Places places(const LocalService& service) const
    {
        return {service.baseUrl(), m_folder->filePath(QStringLiteral("config")), m_folder->path()};
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void SessionTest::keysSurviveInAFileOfTheirOwner()
{
    const mode_t before = umask(0);
    const StoredApiKey store(m_folder->filePath(QStringLiteral("a/b/config")));
    const QString file = m_folder->filePath(QStringLiteral("a/b/config/settings.json"));
    QCOMPARE(store.read(), QString());
    for (const QString& key : {QStringLiteral(" key\n\"ü\" "), QString()}) {
        QVERIFY(store.write(key));
        QCOMPARE(store.read(), key);
        QCOMPARE(modeOf(file), 0600);
    }
    QCOMPARE(modeOf(QFileInfo(file).path()), 0700);

    // A file that was opened up by someone is closed again.
    QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther);
    QVERIFY(store.write(QStringLiteral("key")));
    QCOMPARE(modeOf(file), 0600);
    QCOMPARE(QDir(QFileInfo(file).path()).entryList(QDir::Files).size(), 1);
    umask(before);
}

void SessionTest::brokenSettingsCountAsNoKey_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("garbage") << QByteArray("\xff\x00\x01", 3);
    QTest::newRow("list") << QByteArray("[\"key\"]");
    QTest::newRow("number") << QByteArray(R"({"apiKey": 7})");
    QTest::newRow("other") << QByteArray(R"({"apikey": "x"})");
}

void SessionTest::brokenSettingsCountAsNoKey()
{
    QFETCH(QByteArray, content);
    QDir(m_folder->path()).mkdir(QStringLiteral("config"));
    QFile file(settings());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();

    const LocalService service;
    tessary_macos_uploaderApp app(places(service));
    QCOMPARE(app.screen(), Screen::Login);
    app.sessionManager()->setStoredApiKey(QStringLiteral("key"));
    QCOMPARE(app.sessionManager()->storedApiKey(), QStringLiteral("key"));
}

void SessionTest::anUnwritablePlaceKeepsTheKeyInMemory()
{
    QFile wall(m_folder->filePath(QStringLiteral("config"))); // a file where the folder should be
    QVERIFY(wall.open(QIODevice::WriteOnly));
    const LocalService service;
    tessary_macos_uploaderApp app(places(service));
    KeyForm form;
    form.setProperty("sessionManager", QVariant::fromValue(app.sessionManager()));
    form.setApiKey(studioKey);
    form.submitKey();
    QTRY_VERIFY(app.sessionManager()->hasWorkspace());
    QCOMPARE(app.sessionManager()->apiKey(), studioKey);
    QCOMPARE(app.sessionManager()->storedApiKey(), QString());
}

void SessionTest::startUp_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QByteArray>("answer"); // empty for the service's own
    QTest::addColumn<bool>("staysSignedIn");
    QTest::addColumn<QByteArray>("printed");
    QTest::newRow("no key") << QString() << QByteArray() << false << QByteArray();
    QTest::newRow("good key") << studioKey << QByteArray() << true << QByteArray();
    QTest::newRow("unknown key") << QStringLiteral("other") << QByteArray() << false
                                 << QByteArray(
                                        "Error deserializing JSON: noData\nErorr fetching workspace data\n");
    QTest::newRow("no object") << studioKey << QByteArray("[]") << false << QByteArray();
}

void SessionTest::startUp()
{
    QFETCH(QString, stored);
    QFETCH(QByteArray, answer);
    QFETCH(bool, staysSignedIn);
    QFETCH(QByteArray, printed);

    LocalService service;
    if (!answer.isEmpty()) {
        service.addFault(LocalService::startupPath, Fault::answered({200, answer}));
    }
    StoredApiKey(m_folder->filePath(QStringLiteral("config"))).write(stored);
    const CapturedOutput output;
    tessary_macos_uploaderApp app(places(service));
    SessionManager& session = *app.sessionManager();
    QCOMPARE(app.screen(), stored.isEmpty() ? Screen::Login : Screen::Uploader);
    if (staysSignedIn) {
        QTRY_VERIFY(session.hasWorkspace());
        QCOMPARE(session.workspaceName(), local::localWorkspaces().at(0).name);
    } else {
        QTRY_VERIFY(!session.hasApiKey());
        QCOMPARE(session.signInProblem().isEmpty(), stored.isEmpty());
    }
    QCOMPARE(session.storedApiKey(), staysSignedIn ? stored : QString());
    QCOMPARE(service.requests().size(), std::size_t{stored.isEmpty() ? 0U : 1U});
    QCOMPARE(output.text(), printed);
}

void SessionTest::signingIn()
{
    LocalService service;
    tessary_macos_uploaderApp app(places(service));
    SessionManager& session = *app.sessionManager();
    KeyForm form;
    form.setProperty("sessionManager", QVariant::fromValue(&session));
    // What is shown in turn, and the problem that is told meanwhile. A check may end between two looks.
    QStringList shown;
    connect(&app, &tessary_macos_uploaderApp::screenChanged, this, [&] {
        shown.append(app.screen() == Screen::Uploader
                         ? QStringLiteral("uploader")
                         : QStringLiteral("login: ") + session.signInProblem().left(37));
    });
    const QStringList turns{QStringLiteral("uploader"),
                            QStringLiteral("login: The service does not know a workspace")};

    form.setApiKey(QStringLiteral("wrong"));
    form.submitKey();
    QCOMPARE(session.storedApiKey(), QStringLiteral("wrong")); // at once
    QVERIFY(shown.isEmpty());                                  // not before the click is done
    QTRY_COMPARE(shown, turns);                                // not after the check
    QVERIFY(!session.hasWorkspace());
    QCOMPARE(session.storedApiKey(), QString());

    // An empty key is a key while it is being checked, and a check starts without the last one's problem.
    QSignalSpy problems(&session, &SessionManager::signInProblemChanged);
    form.setApiKey(QString());
    form.submitKey();
    QTRY_COMPARE(shown, turns + turns);
    QCOMPARE(problems.count(), 2);

    service.addFault(LocalService::startupPath, Fault::brokenOff(5));
    form.setApiKey(studioKey);
    form.submitKey();
    QTRY_VERIFY(session.signInProblem().contains(QLatin1StringView("connection")));
    form.submitKey();
    QTRY_VERIFY(session.hasWorkspace());
    QCOMPARE(session.storedApiKey(), studioKey);

    QSignalSpy announced(&session, &SessionManager::apiKeyChanged);
    session.setApiKey(studioKey); // changes nothing
    QCOMPARE(announced.count(), 1);
}

void SessionTest::changingTheKey_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("cancel");
    QTest::newRow("another workspace") << archiveKey << false;
    QTest::newRow("unknown key") << QStringLiteral("other") << false;
    QTest::newRow("cancel") << QStringLiteral("other") << true;
}

void SessionTest::changingTheKey()
{
    QFETCH(QString, typed);
    QFETCH(bool, cancel);

    LocalService service;
    StoredApiKey(m_folder->filePath(QStringLiteral("config"))).write(studioKey);
    tessary_macos_uploaderApp app(places(service));
    SessionManager& session = *app.sessionManager();
    QTRY_VERIFY(session.hasWorkspace());
    const QString before = session.workspaceName();

    app.appManager()->setEditingAPIKey(true);
    QCOMPARE(app.screen(), Screen::ChangeKey);
    ChangeKeyForm form;
    form.setProperty("sessionManager", QVariant::fromValue(&session));
    form.setProperty("appManager", QVariant::fromValue(app.appManager()));
    form.setApiKey(typed);
    if (cancel) {
        form.cancel();
        QCOMPARE(app.screen(), Screen::Uploader);
        QCOMPARE(session.apiKey(), studioKey);
        QCOMPARE(session.storedApiKey(), studioKey);
        return;
    }
    QStringList stored;
    connect(&session, &SessionManager::storedApiKeyChanged, this,
            [&] { stored.append(session.storedApiKey()); });
    form.submitKey();
    QCOMPARE(session.storedApiKey(), studioKey); // the task writes, not the click
    QTRY_VERIFY(!stored.isEmpty());
    QCOMPARE(stored.first(), typed);
    QTRY_VERIFY(!app.appManager()->editingAPIKey());
    const bool accepted = typed == archiveKey;
    QCOMPARE(app.screen(), accepted ? Screen::Uploader : Screen::Login);
    QCOMPARE(session.workspaceName() == before, !accepted);
    QCOMPARE(session.storedApiKey(), accepted ? archiveKey : QString());
}

void SessionTest::theLaterCheckWins()
{
    LocalService service;
    tessary_macos_uploaderApp app(places(service));
    SessionManager& session = *app.sessionManager();
    service.answerInReverse(LocalService::startupPath, 2);
    session.setApiKey(studioKey);
    session.fetchWorkspaceData();
    session.setApiKey(archiveKey);
    session.fetchWorkspaceData();
    QSignalSpy published(&session, &SessionManager::workspaceDataChanged);
    QTRY_COMPARE(published.count(), 2);
    QCOMPARE(session.workspaceName(), local::localWorkspaces().at(0).name);
    QCOMPARE(session.apiKey(), archiveKey);
}

void SessionTest::aFormMayGoBeforeItsTaskRuns()
{
    LocalService service;
    tessary_macos_uploaderApp app(places(service));
    {
        KeyForm form;
        form.setProperty("sessionManager", QVariant::fromValue(app.sessionManager()));
        form.setApiKey(studioKey);
        form.submitKey();
    }
    QTRY_VERIFY(app.sessionManager()->hasWorkspace());
}

QTEST_GUILESS_MAIN(SessionTest)
#include "tst_session.moc"
