#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

#include <optional>

namespace tessary::desktop {

/// Keeps the session from suspending and from being ended while that is wanted. It asks the desktop portal
/// first, then the session managers that offer the same under older names; where nobody does, it does nothing
/// and says nothing. The desktop shows the reason to people who ask it.
class SuspendInhibitor : public QObject
{
    Q_OBJECT

public:
    explicit SuspendInhibitor(QDBusConnection bus = QDBusConnection::sessionBus(), QObject* parent = nullptr);

    /// @param wanted false until it is set
    void setWanted(bool wanted);

private:
    void askNext();
    void release();

    QDBusConnection m_bus;
    bool m_wanted = false;
    bool m_asking = false;
    std::size_t m_asked{};                 ///< how many have been asked since it was wanted
    std::optional<QDBusMessage> m_release; ///< the call that ends the inhibition, while there is one
};

} // namespace tessary::desktop
