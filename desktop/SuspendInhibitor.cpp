#include "desktop/SuspendInhibitor.h"

#include "desktop/Ask.h"
#include "desktop/Portal.h"

#include <QDBusObjectPath>
#include <QVariantMap>

#include <array>
#include <utility>

namespace tessary::desktop {
namespace {

const QString applicationName = QStringLiteral("Tessary Uploader");
const QString reason = QStringLiteral("A video is being uploaded");

/// Logging out and suspending; the same values in the portal's and in the session manager's flags.
constexpr uint flags = 1 | 4;

struct Inhibition
{
    QDBusMessage (*ask)();
    /// The call that ends it, from what was answered.
    QDBusMessage (*end)(const QVariant& answer);
};

QDBusMessage withArguments(QDBusMessage call, const QVariantList& arguments)
{
    call.setArguments(arguments);
    return call;
}

QDBusMessage askPortal()
{
    const QVariantMap options{{QStringLiteral("reason"), reason}};
    return withArguments(QDBusMessage::createMethodCall(portal::service, portal::path,
                                                        QStringLiteral("org.freedesktop.portal.Inhibit"),
                                                        QStringLiteral("Inhibit")),
                         {QString(), flags, options});
}

QDBusMessage endPortal(const QVariant& handle)
{
    return QDBusMessage::createMethodCall(portal::service, handle.value<QDBusObjectPath>().path(),
                                          QStringLiteral("org.freedesktop.portal.Request"),
                                          QStringLiteral("Close"));
}

QDBusMessage sessionManagerCall(const QString& method)
{
    return QDBusMessage::createMethodCall(QStringLiteral("org.gnome.SessionManager"),
                                          QStringLiteral("/org/gnome/SessionManager"),
                                          QStringLiteral("org.gnome.SessionManager"), method);
}

QDBusMessage askSessionManager()
{
    constexpr uint noWindow = 0;
    return withArguments(sessionManagerCall(QStringLiteral("Inhibit")),
                         {applicationName, noWindow, reason, flags});
}

QDBusMessage endSessionManager(const QVariant& cookie)
{
    return withArguments(sessionManagerCall(QStringLiteral("Uninhibit")), {cookie});
}

QDBusMessage powerManagementCall(const QString& method)
{
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.PowerManagement"),
                                          QStringLiteral("/org/freedesktop/PowerManagement/Inhibit"),
                                          QStringLiteral("org.freedesktop.PowerManagement.Inhibit"), method);
}

QDBusMessage askPowerManagement()
{
    return withArguments(powerManagementCall(QStringLiteral("Inhibit")), {applicationName, reason});
}

QDBusMessage endPowerManagement(const QVariant& cookie)
{
    return withArguments(powerManagementCall(QStringLiteral("UnInhibit")), {cookie});
}

constexpr std::array inhibitions{
    Inhibition{askPortal, endPortal},
    Inhibition{askSessionManager, endSessionManager},
    Inhibition{askPowerManagement, endPowerManagement},
};

} // namespace

SuspendInhibitor::SuspendInhibitor(QDBusConnection bus, QObject* parent)
    : QObject(parent), m_bus(std::move(bus))
{
}

void SuspendInhibitor::setWanted(bool wanted)
{
    if (m_wanted == wanted) {
        return;
    }
    m_wanted = wanted;
    if (!m_wanted) {
        release();
    } else if (!m_asking) {
        m_asked = 0;
        askNext();
    }
}

void SuspendInhibitor::askNext()
{
    if (m_asked == inhibitions.size()) {
        return;
    }
    const Inhibition& inhibition = inhibitions.at(m_asked++);
    m_asking = true;
    ask(m_bus, inhibition.ask(), this, [this, end = inhibition.end](const QDBusMessage& answer) {
        m_asking = false;
        if (answer.type() != QDBusMessage::ReplyMessage) {
            askNext();
            return;
        }
        m_release = end(answer.arguments().value(0));
        if (!m_wanted) { // the upload ended while the question was on its way
            release();
        }
    });
}

void SuspendInhibitor::release()
{
    if (m_release) {
        m_bus.call(*std::exchange(m_release, std::nullopt), QDBus::NoBlock);
    }
}

} // namespace tessary::desktop
