#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>

namespace tessary {

/// What the desktop portal says of the appearance that people chose, followed while the program runs. Where
/// there is no portal, it says nothing. Asking it does not hold up the caller.
class PortalAppearance : public QObject
{
    Q_OBJECT

public:
    explicit PortalAppearance(QDBusConnection bus, QObject* parent = nullptr);

    /// A dark appearance is asked for. False until the portal has said so.
    [[nodiscard]] bool prefersDark() const { return m_prefersDark; }

Q_SIGNALS:
    void prefersDarkChanged();

private Q_SLOTS:
    void takeSetting(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void takeColorScheme(const QVariant& value);

    QDBusConnection m_bus;
    bool m_prefersDark = false;
};

} // namespace tessary
