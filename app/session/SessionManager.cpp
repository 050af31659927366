#include "app/session/SessionManager.h"

#include "service/Diagnostics.h"
#include "service/Error.h"

#include <QPointer>

namespace tessary {
namespace {

const QString keyRefused =
    QStringLiteral("The service does not know a workspace for this key. Check the key and try again.");

const QString notAnswered =
    QStringLiteral("The service did not answer with a workspace. It may be out of order; try again later.");

/// Called in a catch block.
QString describeFailedCheck()
{
    try {
        throw;
    } catch (const NotJsonError&) {
        return notAnswered;
    } catch (const std::exception&) {
        const Error error = caughtError();
        // The client reports JSON that is no workspace as its own error; any other means that no answer came.
        const bool answered = error.domain() == toError(APIServiceError::invalidURL).domain();
        return answered ? keyRefused : error.description();
    }
}

} // namespace

SessionManager::SessionManager(StoredApiKey storedApiKey, APIService apiService, QObject* parent)
    : QObject(parent), m_storedApiKey(std::move(storedApiKey)), m_apiService(std::move(apiService))
{
    const QString restored = m_storedApiKey.read();
    if (!restored.isEmpty()) {
        m_apiKey = restored;
        QMetaObject::invokeMethod(
            this, [this] { fetchWorkspaceData(); }, Qt::QueuedConnection);
    }
}

void SessionManager::setApiKey(std::optional<QString> apiKey)
{
    m_apiKey = std::move(apiKey);
    Q_EMIT apiKeyChanged();
}

QString SessionManager::storedApiKey() const
{
    return m_storedApiKey.read();
}

void SessionManager::setStoredApiKey(const QString& apiKey)
{
    m_storedApiKey.write(apiKey);
    Q_EMIT storedApiKeyChanged();
}

void SessionManager::setWorkspaceData(std::optional<Workspace> workspace)
{
    m_workspaceData = std::move(workspace);
    Q_EMIT workspaceDataChanged();
}

QString SessionManager::workspaceName() const
{
    return m_workspaceData ? m_workspaceData->workspaceName : QString();
}

QCoro::Task<> SessionManager::fetchWorkspaceData()
{
    if (!m_apiKey) {
        co_return;
    }
    setSignInProblem({});
    const QPointer<SessionManager> self(this);
    const QString apiKey = *m_apiKey;
    std::optional<Workspace> workspace;
    std::optional<QString> failure;
    try {
        workspace = co_await m_apiService.pullStartupInformation(apiKey);
    } catch (const std::exception&) {
        failure = describeFailedCheck();
    }
    if (self.isNull()) {
        co_return;
    }
    if (failure) {
        printLine(u"Erorr fetching workspace data");
        forgetKey(*failure);
        co_return;
    }
    setWorkspaceData(workspace);
    if (!workspace) {
        forgetKey(keyRefused);
    }
}

void SessionManager::forgetKey(const QString& reason)
{
    setSignInProblem(reason);
    setApiKey(std::nullopt);
    setStoredApiKey({});
}

void SessionManager::setSignInProblem(const QString& problem)
{
    m_signInProblem = problem;
    Q_EMIT signInProblemChanged();
}

} // namespace tessary
