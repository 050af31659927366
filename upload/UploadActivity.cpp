#include "upload/UploadActivity.h"

#include "service/HttpCall.h"

#include <QCoreApplication>

#include <algorithm>
#include <functional>

namespace tessary {

UploadActivity::UploadActivity(QObject* parent) : QObject(parent)
{
    m_killTimer.setSingleShot(true);
    m_killTimer.setInterval(graceBeforeKill);
    connect(&m_killTimer, &QTimer::timeout, this, &UploadActivity::killTools);
}

UploadActivity::~UploadActivity()
{
    blockSignals(true); // who listens may have gone before
    m_gone = true;
    m_tasks.clear();
    const QObjectList transfers = children();
    qDeleteAll(transfers);
    for (std::stop_source& stop : stopsOfUploads()) {
        stop.request_stop();
    }
    endHttpSession();
    // All of it has ended, and only those who wait for it do not know yet: they hear of it while what they
    // touch is there, one after the other. None of them begins anything any more.
    do {
        QCoreApplication::sendPostedEvents();
    } while (underWay());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

std::shared_ptr<const void> UploadActivity::beginUpload(std::stop_source stop)
{
    return begin(std::move(stop));
}

std::shared_ptr<const void> UploadActivity::beginRegistration()
{
    return begin(std::nullopt);
}

std::shared_ptr<const void> UploadActivity::begin(Stop stop)
{
    const auto begun = m_underWay.insert(m_underWay.end(), std::move(stop));
    Q_EMIT underWayChanged();
    return {&*begun, [this, begun](const void* /*counted*/) { forget(begun); }};
}

void UploadActivity::forget(std::list<Stop>::iterator ended)
{
    m_underWay.erase(ended);
    Q_EMIT underWayChanged();
    announceWhenEnded();
}

void UploadActivity::runLater(std::function<void()> task)
{
    if (m_gone) {
        return;
    }
    m_tasks.push_back(std::move(task));
    QMetaObject::invokeMethod(this, &UploadActivity::runTasks, Qt::QueuedConnection);
}

void UploadActivity::runTasks()
{
    // Each may ask for another.
    for (const std::function<void()>& task : std::exchange(m_tasks, {})) {
        task();
    }
}

void UploadActivity::endAll()
{
    m_ending = true;
    m_killTimer.start();
    for (std::stop_source& stop : stopsOfUploads()) {
        stop.request_stop();
    }
    announceWhenEnded();
}

std::vector<std::stop_source> UploadActivity::stopsOfUploads() const
{
    std::vector<std::stop_source> stops;
    for (const Stop& stop : m_underWay) {
        if (stop) {
            stops.push_back(*stop);
        }
    }
    return stops;
}

void UploadActivity::announceWhenEnded()
{
    const bool uploadsLeft = std::any_of(m_underWay.begin(), m_underWay.end(), std::mem_fn(&Stop::has_value));
    if (m_ending && !uploadsLeft) {
        m_ending = false;
        m_killTimer.stop();
        Q_EMIT ended();
    }
}

} // namespace tessary
