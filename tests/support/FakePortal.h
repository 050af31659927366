#pragma once

#include "tests/support/FakeService.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace tessary::testing {

inline const QString portalService = "org.freedesktop.portal.Desktop";

/// A portal on this test's own session bus.
class FakePortal : public FakeService
{
public:
    enum class Manner { Offers, NamesItself, OpensLate, IsSilent, IsAbsent };

    explicit FakePortal(Manner manner)
        : FakeService(QDBusConnection::connectToBus(QDBusConnection::SessionBus, "portal"),
                      manner == Manner::IsAbsent ? QStringList() : QStringList(portalService), {}),
          m_manner(manner)
    {
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override
    {
        if (message.interface() == "org.freedesktop.portal.Settings") {
            return false;
        }
        if (message.member() == settling) {
            return bus.send(message.createReply());
        }
        calls.append(message.interface().section('.', -1) + '.' + message.member());
        if (message.member() == "Close") {
            closed = message.path();
        }
        if (m_manner == Manner::IsSilent) {
            return true;
        }
        arguments = message.arguments();
        if (arguments == QVariantList{"org.freedesktop.portal.FileChooser", "version"}) {
            return bus.send(message.createReply(QVariant::fromValue(QDBusVariant(3U))));
        }
        if (message.member() == "OpenFile") {
            parent = arguments.value(0).toString();
            title = arguments.value(1).toString();
            const auto options = qdbus_cast<QVariantMap>(arguments.value(2));
            modal = options.value("modal").toBool();
            request = QString("/org/freedesktop/portal/desktop/request/%1/%2")
                          .arg(message.service().mid(1).replace('.', '_'),
                               options.value("handle_token").toString());
            request += m_manner == Manner::NamesItself ? "itself" : "";
            m_opened = message.createReply(QVariant::fromValue(QDBusObjectPath(request)));
            return m_manner == Manner::OpensLate || bus.send(m_opened);
        }
        return bus.send(message.createErrorReply(QDBusError::UnknownMethod, "not here"));
    }

    void respond(uint response, const QStringList& uris)
    {
        auto signal = QDBusMessage::createSignal(request, "org.freedesktop.portal.Request", "Response");
        signal.setArguments({response, QVariantMap{{"uris", uris}}});
        m_bus.send(signal);
    }

    void openNow() { m_bus.send(m_opened); }

    void die() { m_bus.unregisterService(portalService); }

    QString request;
    QString closed;
    QString parent;
    QString title;
    bool modal = false;

private:
    QDBusConnection m_bus{"portal"};
    QDBusMessage m_opened;
    Manner m_manner;
};

} // namespace tessary::testing
