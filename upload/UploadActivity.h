#pragma once

#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>
#include <set>
#include <stop_token>

namespace tessary {

/// Everything that is under way, of every window and of screens that are gone: uploads and registrations.
/// Quitting asks it, and ends it through it. Main thread only; outlives what it counts.
class UploadActivity : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool underWay READ underWay NOTIFY underWayChanged)

public:
    explicit UploadActivity(QObject* parent = nullptr);

    /// Counts one upload or registration for as long as it lives.
    class Entry
    {
    public:
        Entry(UploadActivity& activity, std::optional<std::stop_source> stop);
        ~Entry();
        Q_DISABLE_COPY_MOVE(Entry)

    private:
        friend class UploadActivity;
        UploadActivity& m_activity;
        std::optional<std::stop_source> m_stop;
    };

    /// @param stop what ends it early; a registration has none
    [[nodiscard]] std::shared_ptr<Entry> begin(std::optional<std::stop_source> stop);

    [[nodiscard]] bool underWay() const { return !m_entries.empty(); }

    /// Cancels every upload, asks for running tools to be killed after 5 s, and announces ended() when no
    /// upload is left; at once when there is none. Registrations are not waited for.
    void endAll();

Q_SIGNALS:
    void underWayChanged();
    void killTools();
    void ended();

private:
    void announceWhenEnded();

    std::set<const Entry*> m_entries;
    QTimer m_killTimer;
    bool m_ending = false;
};

} // namespace tessary
