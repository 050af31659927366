#pragma once

#include <QAnimationDriver>
#include <QCoreApplication>
#include <QQmlComponent>

#include <memory>

namespace tessary::testkit {

/// While there is one, animations and QML's timers move only when it is stepped, whatever time it is. Main
/// thread only.
class SteppedClock : public QAnimationDriver
{
public:
    explicit SteppedClock(QQmlEngine& engine)
    {
        // Where nothing but timers runs, the machine's clock would be asked again.
        QQmlComponent heartbeat(&engine);
        heartbeat.setData("import QtQuick\nItem { property real beat; NumberAnimation on beat { "
                          "from: 0; to: 1; loops: Animation.Infinite } }",
                          {});
        m_heartbeat.reset(heartbeat.create());
        install();
        QCoreApplication::processEvents();
    }

    [[nodiscard]] qint64 elapsed() const override { return m_now; }

    /// What was started since the last step starts now.
    void step(int milliseconds)
    {
        for (int turn = 0; turn < 3; ++turn) { // they are started by events that bring about more
            QCoreApplication::processEvents();
        }
        m_now += milliseconds;
        advanceAnimation();
        QCoreApplication::processEvents(); // QML's timers go off in an event
    }

protected:
    void start() override
    {
        m_now = 0;
        QAnimationDriver::start();
    }

private:
    std::unique_ptr<QObject> m_heartbeat;
    qint64 m_now = 0;
};

} // namespace tessary::testkit
