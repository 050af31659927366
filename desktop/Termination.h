#pragma once

#include <QObject>
#include <QSocketNotifier>

namespace tessary::desktop {

/// Notices when the process is asked to end, by SIGTERM, SIGINT or SIGHUP, and leaves it to the program to do
/// so in order. The same signal again ends it at once, but for SIGHUP. One for the process, below a
/// QCoreApplication; signals that were ignored stay so.
class Termination : public QObject
{
    Q_OBJECT

public:
    Termination();
    ~Termination() override;
    Q_DISABLE_COPY_MOVE(Termination)

Q_SIGNALS:
    /// From the event loop.
    void requested();

private:
    QSocketNotifier m_notifier; ///< of what the handler writes to
};

/// Ends the process by the signal that asked for its end, so that whoever waits for it sees that; returns
/// when none did. Called last.
void endAsRequested();

} // namespace tessary::desktop
