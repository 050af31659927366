#pragma once

#include "app/session/AppManager.h"
#include "app/session/SessionManager.h"

#include <QObject>
#include <QtQml/qqml.h>

#include <memory>

namespace tessary {

/// The text of the login screen's key field and what submitting it does. A submission under way holds what it
/// needs: the screen and its form may go at any time.
class KeyForm : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::SessionManager* sessionManager MEMBER m_sessionManager)
    /// The text as typed; nothing is trimmed.
    Q_PROPERTY(QString apiKey READ apiKey WRITE setApiKey NOTIFY apiKeyChanged)

public:
    explicit KeyForm(QObject* parent = nullptr);

    [[nodiscard]] QString apiKey() const { return *m_apiKey; }

    void setApiKey(const QString& apiKey);

    /// Persists the key at once; then, as a task of its own, signs in with it. An empty key is submitted too.
    Q_INVOKABLE virtual void submitKey();

Q_SIGNALS:
    void apiKeyChanged();

protected:
    /// Starts the task: takes the key into use, persists it, checks it, and ends the editing of the key when
    /// there is an application manager to end it in.
    void startSignIn(AppManager* appManager);

    SessionManager* m_sessionManager = nullptr;

private:
    std::shared_ptr<QString> m_apiKey; ///< read by the task, which may outlive the form
};

/// The same for the change-key screen, which persists nothing before its task runs.
class ChangeKeyForm : public tessary::KeyForm
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessary::AppManager* appManager MEMBER m_appManager)

public:
    using KeyForm::KeyForm;

    void submitKey() override;

    /// The way back: ends the editing and leaves the key, its persisted copy and the workspace as they are.
    Q_INVOKABLE void cancel();

private:
    AppManager* m_appManager = nullptr;
};

} // namespace tessary
