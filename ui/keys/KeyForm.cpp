#include "ui/keys/KeyForm.h"

#include <QPointer>

namespace tessary {
namespace {

QCoro::Task<> signIn(QPointer<SessionManager> session, QPointer<AppManager> appManager, QString apiKey)
{
    session->setApiKey(apiKey);
    session->setStoredApiKey(apiKey);
    co_await session->fetchWorkspaceData();
    if (!appManager.isNull()) {
        appManager->setEditingAPIKey(false);
    }
}

} // namespace

KeyForm::KeyForm(QObject* parent) : QObject(parent), m_apiKey(std::make_shared<QString>()) {}

void KeyForm::setApiKey(const QString& apiKey)
{
    *m_apiKey = apiKey;
    Q_EMIT apiKeyChanged();
}

void KeyForm::submitKey()
{
    m_sessionManager->setStoredApiKey(*m_apiKey);
    startSignIn(nullptr);
}

void KeyForm::startSignIn(AppManager* appManager)
{
    QMetaObject::invokeMethod(
        m_sessionManager,
        [session = QPointer(m_sessionManager), appManager = QPointer(appManager), typed = m_apiKey] {
            signIn(session, appManager, *typed);
        },
        Qt::QueuedConnection);
}

void ChangeKeyForm::submitKey()
{
    startSignIn(m_appManager);
}

void ChangeKeyForm::cancel()
{
    m_appManager->setEditingAPIKey(false);
}

} // namespace tessary
