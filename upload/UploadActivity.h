#pragma once

#include "upload/UploadEnd.h"

#include <QObject>
#include <QString>

#include <chrono>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <vector>

namespace tessary {

struct UploadTask;

/// Everything that is under way, of every window and of screens that are gone: uploads and registrations.
/// Quitting asks it, and ends it through it. Main thread only; what it counts ends with it at the latest.
class UploadActivity : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool underWay READ underWay NOTIFY underWayChanged)
    Q_PROPERTY(QString progressInWords READ progressInWords NOTIFY progressChanged)

public:
    /// How long a tool may take from the request to end until it is killed. AzCopy needs about 2 s.
    static constexpr std::chrono::seconds graceBeforeKill{5};

    explicit UploadActivity(QObject* parent = nullptr) : QObject(parent) {}

    /// Ends all that is under way at once: what is queued never begins, tools are killed, requests are given
    /// up, also those of a sign-in. Each has let go of all it held when this object is gone.
    ~UploadActivity() override;
    Q_DISABLE_COPY_MOVE(UploadActivity)

    /// Counts one upload for as long as what is returned lives. It can be ended early.
    [[nodiscard]] std::shared_ptr<const void> beginUpload(std::shared_ptr<UploadTask> task);

    /// Counts one registration for as long as what is returned lives. Nothing ends it early.
    [[nodiscard]] std::shared_ptr<const void> beginRegistration();

    [[nodiscard]] bool underWay() const { return !m_underWay.empty(); }

    /// How much of the uploads under way is sent, 0 to 1; none while there are none, or nothing to send.
    [[nodiscard]] std::optional<double> fractionSent() const;

    /// "45 % of 812 GB are up": of all of them. Empty while there are none.
    [[nodiscard]] QString progressInWords() const;

    /// Tells who listens how an upload ended.
    void announceEnd(const UploadEnd& end) { Q_EMIT uploadEnded(end); }

    /// Runs the task from the event loop, or never when this object goes before.
    void runLater(std::function<void()> task);

    /// Cancels every upload, asks for running tools to be killed in time, and announces ended() when no
    /// upload is left; at once when there is none. Registrations are not waited for.
    void endAll();

Q_SIGNALS:
    void underWayChanged();
    void progressChanged();
    void uploadEnded(const tessary::UploadEnd& end);
    void killTools();
    void ended();

private:
    using Task = std::shared_ptr<UploadTask>; ///< null for a registration

    struct Bytes
    {
        qint64 sent = 0;
        qint64 inAll = 0;
    };

    std::shared_ptr<const void> begin(Task task);
    void forget(std::list<Task>::iterator ended);
    [[nodiscard]] Bytes bytes() const;
    void runTasks();
    void announceWhenEnded();

    /// A copy: stopping may end an upload at once, and with it what counts it.
    [[nodiscard]] std::vector<Task> uploads() const;

    std::list<Task> m_underWay;
    std::vector<std::function<void()>> m_tasks;
    bool m_ending = false;
    bool m_gone = false;
};

} // namespace tessary
