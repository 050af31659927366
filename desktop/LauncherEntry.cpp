#include "desktop/LauncherEntry.h"

#include <QDBusMessage>
#include <QVariantMap>

#include <utility>

namespace tessary::desktop {

LauncherEntry::LauncherEntry(QDBusConnection bus, QObject* parent) : QObject(parent), m_bus(std::move(bus))
{
    m_interval.setSingleShot(true);
    m_interval.setInterval(shortestInterval);
    connect(&m_interval, &QTimer::timeout, this, [this] {
        if (m_progress != m_sentProgress) {
            send();
        }
    });
    send();
}

LauncherEntry::~LauncherEntry()
{
    m_progress.reset();
    m_urgent = false;
    send();
}

void LauncherEntry::setProgress(std::optional<double> fraction)
{
    if (fraction == m_progress) {
        return;
    }
    const bool appears = fraction.has_value() != m_progress.has_value();
    m_progress = fraction;
    if (appears || !m_interval.isActive()) {
        send();
    }
}

void LauncherEntry::setUrgent(bool urgent)
{
    if (m_urgent != urgent) {
        m_urgent = urgent;
        send();
    }
}

void LauncherEntry::send()
{
    if (!m_bus.isConnected()) {
        return;
    }
    m_sentProgress = m_progress;
    QDBusMessage update = QDBusMessage::createSignal(
        QStringLiteral("/com/canonical/unity/launcherentry/tessary"),
        QStringLiteral("com.canonical.Unity.LauncherEntry"), QStringLiteral("Update"));
    update.setArguments({QStringLiteral("application://tessary_macos_uploader.desktop"),
                         QVariantMap{
                             {QStringLiteral("progress"), m_progress.value_or(0)},
                             {QStringLiteral("progress-visible"), m_progress.has_value()},
                             {QStringLiteral("urgent"), m_urgent},
                         }});
    m_bus.send(update);
    m_interval.start();
}

} // namespace tessary::desktop
