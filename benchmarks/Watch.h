#pragma once

#include "benchmarks/MonotonicClock.h"

#include <QEvent>
#include <QGuiApplication>
#include <QQuickWindow>

#include <vector>

namespace tessary::benchmarks {

/// Notes when the mouse button goes up, before anything acts on it.
class ClickWatch : public QObject
{
public:
    ClickWatch() { qApp->installEventFilter(this); }

    /// The last time, in milliseconds of the monotonic clock.
    [[nodiscard]] double released() const { return m_released; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::MouseButtonRelease && watched->isWindowType()) {
            m_released = monotonicMilliseconds();
        }
        return false;
    }

private:
    double m_released = 0;
};

/// Takes the time of every frame of a window that is drawn in this thread: from the moment at which it is due
/// to the one at which it is handed to the display.
class FrameWatch : public QObject
{
public:
    explicit FrameWatch(QQuickWindow& window)
    {
        window.installEventFilter(this);
        connect(&window, &QQuickWindow::frameSwapped, this, [this] {
            if (m_due > 0) {
                m_frames.push_back(monotonicMilliseconds() - m_due);
                m_due = 0;
            }
        });
    }

    /// In milliseconds.
    [[nodiscard]] const std::vector<double>& frames() const { return m_frames; }

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        const bool draws = event->type() == QEvent::UpdateRequest || event->type() == QEvent::Resize ||
                           event->type() == QEvent::Expose;
        if (draws && m_due == 0) {
            m_due = monotonicMilliseconds();
        }
        return false;
    }

private:
    double m_due = 0;
    std::vector<double> m_frames;
};

} // namespace tessary::benchmarks
