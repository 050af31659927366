#include "app/DesktopFeedback.h"

#include "app/tessary_macos_uploaderApp.h"

#include <QGuiApplication>
#include <QWindow>

namespace tessary {
namespace {

using Notification = desktop::Notifications::Notification;

/// A text of people's own, short and on one line.
QString asName(const QString& text)
{
    constexpr int longest = 100;
    const QString name = text.simplified();
    return u'"' + (name.size() > longest ? name.first(longest) + u'…' : name) + u'"';
}

Notification notificationOf(const UploadEnd& end, const QString& workspace)
{
    const QString name = asName(end.videoName);
    switch (end.kind) {
    case UploadEnd::Kind::Registered:
        return {QStringLiteral("Upload complete"),
                name + (workspace.isEmpty()
                            ? QStringLiteral(" is in the library.")
                            : QLatin1StringView(" is in the library of ") + workspace.simplified() + u'.')};
    case UploadEnd::Kind::UploadFailed:
        return {QStringLiteral("Upload failed"),
                name + QLatin1StringView(" could not be uploaded: ") + end.description};
    case UploadEnd::Kind::RegistrationFailed:
        break;
    }
    return {QStringLiteral("Uploaded, but not in the library"),
            name + QLatin1StringView(" could not be added to the library: ") + end.description, true};
}

} // namespace

DesktopFeedback::DesktopFeedback(tessary_macos_uploaderApp& application) : m_application(application)
{
    const UploadActivity* activity = application.uploadActivity();
    connect(activity, &UploadActivity::underWayChanged, this,
            [this, activity] { m_suspendInhibitor.setWanted(activity->underWay()); });
    connect(activity, &UploadActivity::progressChanged, this,
            [this, activity] { m_launcherEntry.setProgress(activity->fractionSent()); });
    connect(activity, &UploadActivity::uploadEnded, this, &DesktopFeedback::tell);
    connect(qApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow* window) {
        if (window != nullptr) {
            m_launcherEntry.setUrgent(false);
        }
    });
    connect(&m_notifications, &desktop::Notifications::pressed, this, &DesktopFeedback::windowWanted);
}

void DesktopFeedback::tell(const UploadEnd& end)
{
    if (QGuiApplication::focusWindow() != nullptr) {
        return; // it is seen there
    }
    if (end.kind != UploadEnd::Kind::Registered) {
        m_launcherEntry.setUrgent(true);
    }
    m_notifications.show(end.screen, notificationOf(end, m_application.sessionManager()->workspaceName()));
}

} // namespace tessary
