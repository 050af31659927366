#include "app/tessary_macos_uploaderApp.h"

namespace tessary {

tessary_macos_uploaderApp::tessary_macos_uploaderApp(const Configuration& configuration, QObject* parent)
    : QObject(parent),
      m_sessionManager(StoredApiKey(configuration.settingsFolder), APIService(configuration.baseUrl)),
      m_uploaderStates({[this] { return m_sessionManager.apiKey(); }, &m_uploadActivity,
                        APIService(configuration.baseUrl), configuration.resourcesFolder})
{
    connect(&m_sessionManager, &SessionManager::apiKeyChanged, this,
            &tessary_macos_uploaderApp::screenChanged);
    connect(&m_appManager, &AppManager::editingAPIKeyChanged, this,
            &tessary_macos_uploaderApp::screenChanged);
}

tessary_macos_uploaderApp::Screen tessary_macos_uploaderApp::screen() const
{
    if (!m_sessionManager.hasApiKey()) {
        return Screen::Login;
    }
    return m_appManager.editingAPIKey() ? Screen::ChangeKey : Screen::Uploader;
}

} // namespace tessary
