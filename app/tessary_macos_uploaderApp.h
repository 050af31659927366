#pragma once

#include "app/Configuration.h"
#include "app/session/AppManager.h"
#include "app/session/SessionManager.h"
#include "upload/UploadActivity.h"
#include "upload/UploaderStateFactory.h"

#include <QObject>

namespace tessary {

/// The application object: owns what all windows share, for the whole run, and chooses the screen that they
/// show. It goes after every window and before QCoreApplication.
class tessary_macos_uploaderApp
    : public QObject // NOLINT(readability-identifier-naming): the program's own name
{
    Q_OBJECT
    Q_PROPERTY(tessary::SessionManager* sessionManager READ sessionManager CONSTANT)
    Q_PROPERTY(tessary::AppManager* appManager READ appManager CONSTANT)
    Q_PROPERTY(tessary::UploadActivity* uploadActivity READ uploadActivity CONSTANT)
    Q_PROPERTY(tessary::UploaderStateFactory* uploaderStates READ uploaderStates CONSTANT)
    Q_PROPERTY(Screen screen READ screen NOTIFY screenChanged)

public:
    enum class Screen { Login, Uploader, ChangeKey };
    Q_ENUM(Screen)

    explicit tessary_macos_uploaderApp(const Configuration& configuration = {}, QObject* parent = nullptr);

    [[nodiscard]] SessionManager* sessionManager() { return &m_sessionManager; }

    [[nodiscard]] AppManager* appManager() { return &m_appManager; }

    [[nodiscard]] UploadActivity* uploadActivity() { return &m_uploadActivity; }

    [[nodiscard]] UploaderStateFactory* uploaderStates() { return &m_uploaderStates; }

    /// The login screen without a key, the change-key screen with one that is being edited, else the
    /// uploader. Only the presence of a key counts, not what it holds or whether it was checked.
    [[nodiscard]] Screen screen() const;

Q_SIGNALS:
    /// Either shared object announced a change; the screen may be the same.
    void screenChanged();

private:
    UploadActivity m_uploadActivity; ///< goes last and ends what is in flight: a check that is cut short then
                                     ///< finds no session that would forget its key
    SessionManager m_sessionManager;
    AppManager m_appManager;
    UploaderStateFactory m_uploaderStates;
};

} // namespace tessary
