#include "desktop/PortalFileChooser.h"

#include "desktop/Ask.h"
#include "desktop/Portal.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <QDir>
#include <QGuiApplication>
#include <QJsonArray>
#include <QPluginLoader>
#include <QStringList>
#include <QUuid>
#include <QWindow>

#include <chrono>

namespace tessary::desktop {
namespace {

const QString fileChooser = QStringLiteral("org.freedesktop.portal.FileChooser");
const QString requestInterface = QStringLiteral("org.freedesktop.portal.Request");

/// People wait no longer than 2 s for a dialog; what is left is for the other one to come up.
constexpr std::chrono::milliseconds patience{1500};

QDBusMessage call(const QString& path, const QString& interface, const QString& method,
                  const QVariantList& arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(portal::service, path, interface, method);
    message.setArguments(arguments);
    return message;
}

/// The platform theme that the toolkit takes on this desktop; empty for none of its own.
QString themeOfDesktop()
{
    static const QStringList gtk{QStringLiteral("GNOME"),    QStringLiteral("X-CINNAMON"),
                                 QStringLiteral("PANTHEON"), QStringLiteral("UNITY"),
                                 QStringLiteral("MATE"),     QStringLiteral("XFCE"),
                                 QStringLiteral("LXDE")};
    const QString names = qEnvironmentVariable("XDG_CURRENT_DESKTOP").toUpper();
    for (const QString& name : names.split(u':', Qt::SkipEmptyParts)) {
        if (name == QLatin1StringView("KDE")) {
            return QStringLiteral("kde");
        }
        if (gtk.contains(name)) {
            return QStringLiteral("gtk3");
        }
    }
    return {};
}

bool isInstalled(const QString& theme)
{
    for (const QString& path : QCoreApplication::libraryPaths()) {
        const QDir folder(path + QStringLiteral("/platformthemes"));
        for (const QString& file : folder.entryList(QDir::Files)) {
            const QJsonObject description = QPluginLoader(folder.filePath(file)).metaData();
            const QJsonArray keys = description.value(QLatin1StringView("MetaData"))
                                        .toObject()
                                        .value(QLatin1StringView("Keys"))
                                        .toArray();
            if (keys.contains(theme)) {
                return true;
            }
        }
    }
    return false;
}

/// How portals name a window that their dialog belongs to. There is no such name on Wayland without a
/// protocol of its own.
QString portalNameOf(const QWindow* window)
{
    return window != nullptr && QGuiApplication::platformName() == QLatin1StringView("xcb")
               ? QStringLiteral("x11:") + QString::number(window->winId(), 16)
               : QString();
}

} // namespace

PortalFileChooser::PortalFileChooser(QDBusConnection bus, QObject* parent)
    : QObject(parent),
      m_bus(std::move(bus)),
      m_portal(portal::service, m_bus, QDBusServiceWatcher::WatchForUnregistration)
{
    m_timer.setInterval(patience);
    connect(&m_timer, &QTimer::timeout, this, &PortalFileChooser::giveUp);
    connect(&m_portal, &QDBusServiceWatcher::serviceUnregistered, this, [this] {
        if (!m_request.isEmpty()) {
            reset();
            Q_EMIT dismissed();
        }
    });
}

PortalFileChooser::~PortalFileChooser()
{
    if (!m_request.isEmpty()) {
        m_bus.call(call(m_request, requestInterface, QStringLiteral("Close"), {}), QDBus::NoBlock);
    }
}

bool PortalFileChooser::isWanted()
{
    return qEnvironmentVariableIsEmpty("QT_QPA_PLATFORMTHEME") && !isInstalled(themeOfDesktop());
}

void PortalFileChooser::open(const QWindow* window, const QString& title)
{
    if (isOpen()) {
        return;
    }
    m_window = portalNameOf(window);
    m_title = title;
    m_timer.start();
    askPortal(call(portal::path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                   {fileChooser, QStringLiteral("version")}),
              &PortalFileChooser::takeVersion);
}

void PortalFileChooser::askPortal(const QDBusMessage& question, Answered answered)
{
    ask(m_bus, question, this, [this, answered, round = m_round](const QDBusMessage& answer) {
        const QVariant value = answer.arguments().value(0);
        if (round != m_round) { // what was opened too late is not wanted any more
            const QString request = value.value<QDBusObjectPath>().path();
            if (!request.isEmpty()) {
                m_bus.call(call(request, requestInterface, QStringLiteral("Close"), {}), QDBus::NoBlock);
            }
            return;
        }
        if (answer.type() == QDBusMessage::ReplyMessage) {
            (this->*answered)(value);
        } else {
            giveUp();
        }
    });
}

void PortalFileChooser::takeVersion(const QVariant& version)
{
    if (version.value<QDBusVariant>().variant().toUInt() == 0) {
        giveUp();
        return;
    }
    const QString token = QUuid::createUuid().toString(QUuid::Id128);
    // The answer may come before that of the call, so it is listened for where it will be announced.
    const QString sender = m_bus.baseService().mid(1).replace(u'.', u'_');
    listen(portal::path + QStringLiteral("/request/") + sender + u'/' + token);
    const QVariantMap options{{QStringLiteral("handle_token"), token}, {QStringLiteral("modal"), true}};
    askPortal(call(portal::path, fileChooser, QStringLiteral("OpenFile"), {m_window, m_title, options}),
              &PortalFileChooser::takeRequest);
}

void PortalFileChooser::takeRequest(const QVariant& request)
{
    const QString path = request.value<QDBusObjectPath>().path();
    if (path.isEmpty()) {
        giveUp();
        return;
    }
    m_timer.stop();
    if (path != m_request) { // portals before version 0.9 name it themselves
        listen(path);
    }
}

void PortalFileChooser::listen(const QString& request)
{
    m_bus.disconnect(portal::service, m_request, requestInterface, QStringLiteral("Response"), this,
                     SLOT(takeResponse(uint, QVariantMap)));
    m_request = request;
    if (!m_request.isEmpty()) {
        m_bus.connect(portal::service, m_request, requestInterface, QStringLiteral("Response"), this,
                      SLOT(takeResponse(uint, QVariantMap)));
    }
}

void PortalFileChooser::takeResponse(uint response, const QVariantMap& results)
{
    reset();
    constexpr uint confirmed = 0;
    const QStringList files = results.value(QStringLiteral("uris")).toStringList();
    if (response == confirmed && !files.isEmpty()) {
        Q_EMIT chosen(QUrl::fromEncoded(files.constFirst().toUtf8()));
    } else {
        Q_EMIT dismissed();
    }
}

void PortalFileChooser::giveUp()
{
    reset();
    Q_EMIT unavailable();
}

void PortalFileChooser::reset()
{
    ++m_round;
    m_timer.stop();
    listen({});
}

} // namespace tessary::desktop
