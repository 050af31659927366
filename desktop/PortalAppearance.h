#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QString>
#include <QVariantMap>

namespace tessary::desktop {

/// What the desktop portal says of the looks that people chose, followed while the program runs. Where there
/// is no portal, nothing is chosen. Asking it does not hold up the caller, and what it answers may be of any
/// kind: what is no fitting value counts as not said.
class PortalAppearance : public QObject
{
    Q_OBJECT

public:
    explicit PortalAppearance(QDBusConnection bus = QDBusConnection::sessionBus(), QObject* parent = nullptr);

    /// A dark appearance is asked for.
    [[nodiscard]] bool prefersDark() const;
    /// More contrast is asked for, by the portal's own setting or by that of an older desktop.
    [[nodiscard]] bool highContrast() const;
    /// False when nothing is to move that need not.
    [[nodiscard]] bool animations() const;
    /// How large text is to be, from 0.5 to 3; 1 is the size of the desktop's font.
    [[nodiscard]] double textScale() const;

    /// The desktop's font once it has been changed while this object lives, such as "Cantarell Bold 11";
    /// empty before: the toolkit knows the first one better, since a portal may speak for a desktop that is
    /// not this one.
    [[nodiscard]] QString changedFont() const { return m_changedFont; }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void takeSetting(const QString& group, const QString& key, const QDBusVariant& value);

private:
    QDBusConnection m_bus;
    QMap<QString, QVariantMap> m_settings; ///< by group and key, as the portal has them
    QString m_changedFont;
};

} // namespace tessary::desktop
