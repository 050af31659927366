#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <optional>

namespace tessary::desktop {

/// What docks show on the program's icon: a bar, and that it wants to be looked at. By the signals that they
/// took over from an older desktop (com.canonical.Unity.LauncherEntry), for the installed desktop entry. Both
/// are off at first and when the object goes, whatever a program before this one left there.
class LauncherEntry : public QObject
{
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds shortestInterval{500}; ///< between two moves of the bar

    explicit LauncherEntry(QDBusConnection bus = QDBusConnection::sessionBus(), QObject* parent = nullptr);
    ~LauncherEntry() override;
    Q_DISABLE_COPY_MOVE(LauncherEntry)

    /// @param fraction 0 to 1; without one there is no bar
    void setProgress(std::optional<double> fraction);
    void setUrgent(bool urgent);

private:
    void send();

    QDBusConnection m_bus;
    std::optional<double> m_progress;
    std::optional<double> m_sentProgress; ///< what docks know; what differs is sent when the interval is over
    bool m_urgent = false;
    QTimer m_interval{this};
};

} // namespace tessary::desktop
