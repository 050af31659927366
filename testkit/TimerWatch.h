#pragma once

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QList>
#include <QObject>
#include <QTimerEvent>

#include <algorithm>
#include <chrono>

namespace tessary::testkit {

/// Notes every timer of this thread that goes off while it lives.
class TimerWatch : public QObject
{
public:
    TimerWatch() { QCoreApplication::instance()->installEventFilter(this); }

    /// Whether a timer with exactly this interval went off.
    /// @param type how well it is kept: to the millisecond, or to a twentieth
    [[nodiscard]] bool saw(std::chrono::milliseconds interval, Qt::TimerType type) const
    {
        return std::any_of(m_timers.begin(), m_timers.end(), [interval, type](const auto& timer) {
            return timer.interval == interval.count() && timer.timerType == type;
        });
    }

protected:
    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        if (event->type() == QEvent::Timer) {
            m_timers += QAbstractEventDispatcher::instance()->registeredTimers(receiver);
        }
        return false;
    }

private:
    QList<QAbstractEventDispatcher::TimerInfo> m_timers;
};

} // namespace tessary::testkit
