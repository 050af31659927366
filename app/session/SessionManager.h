#pragma once

#include "app/session/StoredApiKey.h"
#include "service/APIService.h"

#include <QCoro/QCoroTask>
#include <QObject>

#include <optional>

namespace tessary {

/// Who the user is to the service: the key in use, its persisted copy and the key's workspace. One for the
/// whole run, on the main thread. Every assignment is announced, also one that changes nothing.
class SessionManager : public QObject
{
    Q_OBJECT
    /// A key is in use. An empty one counts, and so does one whose check is still under way.
    Q_PROPERTY(bool hasApiKey READ hasApiKey NOTIFY apiKeyChanged)
    Q_PROPERTY(bool hasWorkspace READ hasWorkspace NOTIFY workspaceDataChanged)
    /// Empty without a workspace.
    Q_PROPERTY(QString workspaceName READ workspaceName NOTIFY workspaceDataChanged)
    /// Why the last check failed, in words for a person; empty otherwise.
    Q_PROPERTY(QString signInProblem READ signInProblem NOTIFY signInProblemChanged)

public:
    /// Takes up the stored key, if there is one, and starts its check.
    SessionManager(StoredApiKey storedApiKey, APIService apiService, QObject* parent = nullptr);

    [[nodiscard]] const std::optional<QString>& apiKey() const { return m_apiKey; }

    void setApiKey(std::optional<QString> apiKey);

    [[nodiscard]] bool hasApiKey() const { return m_apiKey.has_value(); }

    /// The persisted key, read from its file; empty when there is none.
    [[nodiscard]] QString storedApiKey() const;
    void setStoredApiKey(const QString& apiKey);

    /// The workspace of the last successful check; a failed check leaves it.
    [[nodiscard]] const std::optional<Workspace>& workspaceData() const { return m_workspaceData; }

    void setWorkspaceData(std::optional<Workspace> workspace);

    [[nodiscard]] bool hasWorkspace() const { return m_workspaceData.has_value(); }

    [[nodiscard]] QString workspaceName() const;

    [[nodiscard]] QString signInProblem() const { return m_signInProblem; }

    /// Checks the key in use and takes up its workspace, or forgets the key, also the persisted one, when the
    /// check fails in any way. Never throws. Checks are not serialised: each applies its outcome when it
    /// completes.
    QCoro::Task<> fetchWorkspaceData();

Q_SIGNALS:
    void apiKeyChanged();
    void storedApiKeyChanged();
    void workspaceDataChanged();
    void signInProblemChanged();

private:
    void forgetKey(const QString& reason);
    void setSignInProblem(const QString& problem);

    StoredApiKey m_storedApiKey;
    std::optional<QString> m_apiKey;
    std::optional<Workspace> m_workspaceData;
    QString m_signInProblem;
    APIService m_apiService;
};

} // namespace tessary
