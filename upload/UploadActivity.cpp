#include "upload/UploadActivity.h"

#include <algorithm>
#include <chrono>
#include <vector>

namespace tessary {
namespace {

/// The transfer tool needs about 2 s from a termination request to its end.
constexpr std::chrono::seconds graceBeforeKill{5};

} // namespace

UploadActivity::UploadActivity(QObject* parent) : QObject(parent)
{
    m_killTimer.setSingleShot(true);
    m_killTimer.setInterval(graceBeforeKill);
    connect(&m_killTimer, &QTimer::timeout, this, &UploadActivity::killTools);
}

UploadActivity::Entry::Entry(UploadActivity& activity, std::optional<std::stop_source> stop)
    : m_activity(activity), m_stop(std::move(stop))
{
    m_activity.m_entries.insert(this);
    Q_EMIT m_activity.underWayChanged();
}

UploadActivity::Entry::~Entry()
{
    m_activity.m_entries.erase(this);
    Q_EMIT m_activity.underWayChanged();
    m_activity.announceWhenEnded();
}

std::shared_ptr<UploadActivity::Entry> UploadActivity::begin(std::optional<std::stop_source> stop)
{
    return std::make_shared<Entry>(*this, std::move(stop));
}

void UploadActivity::endAll()
{
    m_ending = true;
    m_killTimer.start();
    // Copied first: stopping may end an upload at once, and with it its entry.
    std::vector<std::stop_source> stops;
    for (const Entry* entry : m_entries) {
        if (entry->m_stop) {
            stops.push_back(*entry->m_stop);
        }
    }
    for (std::stop_source& stop : stops) {
        stop.request_stop();
    }
    announceWhenEnded();
}

void UploadActivity::announceWhenEnded()
{
    const bool uploadsLeft = std::any_of(m_entries.begin(), m_entries.end(),
                                         [](const Entry* entry) { return entry->m_stop.has_value(); });
    if (m_ending && !uploadsLeft) {
        m_ending = false;
        m_killTimer.stop();
        Q_EMIT ended();
    }
}

} // namespace tessary
