#include "app/tessary_macos_uploaderApp.h"

namespace tessary {

tessary_macos_uploaderApp::tessary_macos_uploaderApp(Places places, QObject* parent)
    : QObject(parent),
      m_places(std::move(places)),
      m_sessionManager(StoredApiKey(m_places.settingsFolder), APIService(m_places.baseUrl))
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

std::shared_ptr<FileUploaderState> tessary_macos_uploaderApp::makeUploaderState()
{
    return std::make_shared<FileUploaderState>(UploadSurroundings{
        &m_sessionManager, &m_uploadActivity, APIService(m_places.baseUrl), m_places.resourcesFolder});
}

} // namespace tessary
