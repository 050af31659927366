#include "app/tessary_macos_uploaderApp.h"
#include "standins/LocalService.h"
#include "tests/support/CapturedOutput.h"
#include "ui/keys/KeyForm.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace tessary;
using standins::Breakage;
using standins::Fault;
using standins::LocalService;
using Screen = tessary_macos_uploaderApp::Screen;

namespace {

const QString studioKey = standins::localWorkspaces().at(0).key;
const QString archiveKey = standins::localWorkspaces().at(1).key;

} // namespace

class SessionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void startUp_data();
    void startUp();
    void signingIn();
    void changingTheKey_data();
    void changingTheKey();
    void theLaterCheckWins();
    void laterChecks_data();
    void laterChecks();
    void aFormMayGoBeforeItsTaskRuns();

private:
    [[nodiscard]] Configuration configuration(const LocalService& service) const
    {
        return {service.baseUrl(), m_folder->filePath(QStringLiteral("config")), m_folder->path()};
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

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
    tessary_macos_uploaderApp app(configuration(service));
    SessionManager& session = *app.sessionManager();
    QCOMPARE(app.screen(), stored.isEmpty() ? Screen::Login : Screen::Uploader);
    if (staysSignedIn) {
        QTRY_VERIFY(session.hasWorkspace());
        QCOMPARE(session.workspaceName(), standins::localWorkspaces().at(0).name);
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
    tessary_macos_uploaderApp app(configuration(service));
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

    service.addFault(LocalService::startupPath,
                     Fault::broken(Breakage::Sent::HalfTheBody, Breakage::End::Closed));
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
    tessary_macos_uploaderApp app(configuration(service));
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
    tessary_macos_uploaderApp app(configuration(service));
    SessionManager& session = *app.sessionManager();
    service.answerInReverse(LocalService::startupPath, 2);
    session.setApiKey(studioKey);
    session.fetchWorkspaceData();
    QTRY_COMPARE(service.requests().size(), std::size_t{1});
    session.setApiKey(archiveKey);
    session.fetchWorkspaceData();
    QSignalSpy published(&session, &SessionManager::workspaceDataChanged);
    QTRY_COMPARE(published.count(), 2);
    QCOMPARE(session.workspaceName(), standins::localWorkspaces().at(0).name);
    QCOMPARE(session.apiKey(), archiveKey);
}

void SessionTest::laterChecks_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<bool>("keepsWorkspace");
    QTest::addColumn<QString>("problem");
    const QString unknown =
        QStringLiteral("The service does not know a workspace for this key. Check the key and try again.");
    const QString elsewhere = QStringLiteral(
        "The service did not answer with a workspace. It may be out of order; try again later.");
    QTest::newRow("none") << QByteArray("[]") << false << unknown;
    QTest::newRow("error object") << QByteArray("{}") << true << unknown;
    QTest::newRow("page of a gateway") << QByteArray("<p>Bad gateway</p>") << true << elsewhere;
}

/// What becomes of an earlier workspace, and what is told.
void SessionTest::laterChecks()
{
    QFETCH(QByteArray, answer);
    QFETCH(bool, keepsWorkspace);
    QFETCH(QString, problem);
    LocalService service;
    StoredApiKey(m_folder->filePath(QStringLiteral("config"))).write(studioKey);
    tessary_macos_uploaderApp app(configuration(service));
    SessionManager& session = *app.sessionManager();
    QTRY_VERIFY(session.hasWorkspace());
    service.addFault(LocalService::startupPath, Fault::answered({502, answer}));
    session.fetchWorkspaceData();
    QVERIFY(session.hasApiKey());
    QTRY_COMPARE(session.signInProblem(), problem);
    QTRY_VERIFY(!session.hasApiKey());
    QCOMPARE(session.storedApiKey(), QString());
    QCOMPARE(session.hasWorkspace(), keepsWorkspace);
    QCOMPARE(session.workspaceName(), keepsWorkspace ? standins::localWorkspaces().at(0).name : QString());
}

void SessionTest::aFormMayGoBeforeItsTaskRuns()
{
    LocalService service;
    tessary_macos_uploaderApp app(configuration(service));
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
