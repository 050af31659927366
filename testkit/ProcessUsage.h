#pragma once

#include <QList>

#include <chrono>

namespace tessary::testkit {

/// What this process holds and has used, as the system counts it (proc(5), getrusage(2)).
struct ProcessUsage
{
    qint64 residentBytes;
    qint64 peakResidentBytes;
    int descriptors;
    int threads;
    QList<qint64> children;           ///< process ids, also of those that ended and were not collected
    std::chrono::microseconds ownCpu; ///< in user and kernel mode, children excluded
};

[[nodiscard]] ProcessUsage takeProcessUsage();

} // namespace tessary::testkit
