#pragma once

#include "app/AppManager.h"
#include "app/SessionManager.h"
#include "upload/FileUploaderState.h"
#include "upload/TransferTool.h"
#include "upload/UploadActivity.h"

#include <QObject>

#include <memory>

namespace tessary {

/// Where the program finds its service, its settings and its resources. The defaults are the shipped
/// program's.
struct Places
{
    QString baseUrl = standardBaseUrl();
    QString settingsFolder = StoredApiKey::standardFolder();
    QString resourcesFolder = standardResourcesFolder();
};

/// The application object: owns what all windows share, for the whole run, and chooses the screen that they
/// show. It goes after every window and before QCoreApplication.
class tessary_macos_uploaderApp
    : public QObject // NOLINT(readability-identifier-naming): the program's own name
{
    Q_OBJECT
    Q_PROPERTY(tessary::SessionManager* sessionManager READ sessionManager CONSTANT)
    Q_PROPERTY(tessary::AppManager* appManager READ appManager CONSTANT)
    Q_PROPERTY(tessary::UploadActivity* uploadActivity READ uploadActivity CONSTANT)
    Q_PROPERTY(Screen screen READ screen NOTIFY screenChanged)

public:
    enum class Screen { Login, Uploader, ChangeKey };
    Q_ENUM(Screen)

    explicit tessary_macos_uploaderApp(Places places = {}, QObject* parent = nullptr);

    [[nodiscard]] SessionManager* sessionManager() { return &m_sessionManager; }

    [[nodiscard]] AppManager* appManager() { return &m_appManager; }

    [[nodiscard]] UploadActivity* uploadActivity() { return &m_uploadActivity; }

    /// The login screen without a key, the change-key screen with one that is being edited, else the
    /// uploader. Only the presence of a key counts, not what it holds or whether it was checked.
    [[nodiscard]] Screen screen() const;

    /// A fresh state for an uploader screen. Its uploads keep it alive when the screen goes.
    [[nodiscard]] std::shared_ptr<FileUploaderState> makeUploaderState();

Q_SIGNALS:
    /// Either shared object announced a change; the screen may be the same.
    void screenChanged();

private:
    Places m_places;
    SessionManager m_sessionManager;
    AppManager m_appManager;
    UploadActivity m_uploadActivity;
};

} // namespace tessary
