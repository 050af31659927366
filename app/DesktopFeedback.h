#pragma once

#include "desktop/LauncherEntry.h"
#include "desktop/Notifications.h"
#include "desktop/SuspendInhibitor.h"
#include "upload/UploadEnd.h"

#include <QObject>
#include <QString>

namespace tessary {

class tessary_macos_uploaderApp;

/// Lets the desktop know of uploads: it stays awake while there are any, the dock shows how far they are, and
/// where no window of the program has the keyboard, a notification says how each ended that nobody cancelled.
/// Main thread only.
class DesktopFeedback : public QObject
{
    Q_OBJECT

public:
    /// @param application outlives this object
    explicit DesktopFeedback(tessary_macos_uploaderApp& application);

Q_SIGNALS:
    /// The person wants to see the window of the screen with that number, or any when the screen is gone.
    /// @param token by which the compositor lets it come to the front; may be empty
    void windowWanted(quint64 screen, const QString& token);

private:
    void tell(const UploadEnd& end);

    tessary_macos_uploaderApp& m_application;
    desktop::SuspendInhibitor m_suspendInhibitor;
    desktop::LauncherEntry m_launcherEntry;
    desktop::Notifications m_notifications;
};

} // namespace tessary
