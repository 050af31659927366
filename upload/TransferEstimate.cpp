#include "upload/TransferEstimate.h"

#include <algorithm>
#include <cmath>

namespace tessary {

TransferEstimate::TransferEstimate(const QList<qint64>& sizes, Time start) : m_lastMove(start)
{
    for (const qint64 size : sizes) {
        m_files.push_back({size});
        m_bytesInAll += size;
    }
}

void TransferEstimate::report(std::size_t file, double fraction, const QString& throughput, Time now)
{
    File& reported = m_files.at(file);
    const double share = std::isfinite(fraction) ? std::clamp(fraction, 0.0, 1.0) : reported.fraction;
    if (share < reported.fraction) {
        m_steps.clear();
    }
    if (share != reported.fraction || throughput != reported.throughput) {
        m_lastMove = now;
    }
    const bool moved = share != reported.fraction;
    reported.fraction = share;
    reported.throughput = throughput;
    if (!moved) {
        return;
    }
    m_steps.push_back({now, bytesSent()});
    // Two steps at least are kept, and the newest that is as old as the span.
    while (m_steps.size() > 3 && now - m_steps.at(1).at >= rateSpan) {
        m_steps.pop_front();
    }
}

void TransferEstimate::startAnew(Time now)
{
    m_steps.clear();
    m_lastMove = now;
}

qint64 TransferEstimate::bytesSent() const
{
    double sent = 0;
    for (const File& file : m_files) {
        sent += file.fraction * static_cast<double>(file.size);
    }
    return std::llround(sent);
}

std::optional<TransferEstimate::Time> TransferEstimate::timeLeft(Time now) const
{
    constexpr std::size_t fewest = 3; // points, which are two steps
    if (m_steps.size() < fewest || standstill(now)) {
        return std::nullopt;
    }
    const Step& first = m_steps.front();
    const Step& last = m_steps.back();
    const double sent = static_cast<double>(last.sent - first.sent);
    const double took = std::chrono::duration<double, Time::period>(last.at - first.at).count();
    if (first.sent == last.sent) {
        return std::nullopt; // of files without content
    }
    // Since the last step as much was sent as the rate says, but less than a step: a later one would have
    // been reported. So the longer the next one takes, the slower it is going.
    const double since = std::chrono::duration<double, Time::period>(now - last.at).count();
    const double step = took / static_cast<double>(m_steps.size() - 1);
    const double perByte = (took + std::max(0.0, since - step)) / sent;
    const double unsent = static_cast<double>(m_bytesInAll - last.sent) * perByte;
    return Time(std::llround(std::max(0.0, unsent - std::min(since, step))));
}

std::optional<TransferEstimate::Time> TransferEstimate::standstill(Time now) const
{
    const Time still = now - m_lastMove;
    return still >= patience ? std::optional(still) : std::nullopt;
}

} // namespace tessary
