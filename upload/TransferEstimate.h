#pragma once

#include <QList>
#include <QString>

#include <chrono>
#include <deque>
#include <optional>
#include <vector>

namespace tessary {

/// How much of an upload is sent and how long the rest will take, judged by what the transfer tools report. A
/// plain value without a clock: each call that depends on the time is handed one, from any origin, never
/// going back.
class TransferEstimate
{
public:
    using Time = std::chrono::milliseconds;

    /// Over how long the rate is taken. It is longer where the tool reports in coarser steps: AzCopy tells
    /// tenths of a per cent, which at 812 GB and 100 Mb/s are 65 s each.
    static constexpr Time rateSpan = std::chrono::seconds(30);

    /// A transfer stands still when neither its share nor its throughput has changed for that long.
    static constexpr Time patience = std::chrono::minutes(1);

    TransferEstimate() = default;

    /// @param sizes of the files in bytes, each moved by a tool of its own
    TransferEstimate(const QList<qint64>& sizes, Time start);

    /// @param file its place among the sizes
    /// @param fraction of it that is sent, 0 to 1; one that went back begins a new judgement of the rate
    /// @param throughput as the tool words it, only compared with the one before
    void report(std::size_t file, double fraction, const QString& throughput, Time now);

    /// Forgets the rate, since it says nothing of what comes: the computer was asleep.
    void startAnew(Time now);

    [[nodiscard]] qint64 bytesInAll() const { return m_bytesInAll; }

    [[nodiscard]] qint64 bytesSent() const;

    /// None while it cannot be known: before the third step, or when nothing moves.
    [[nodiscard]] std::optional<Time> timeLeft(Time now) const;

    /// How long nothing has moved; none before the patience is over.
    [[nodiscard]] std::optional<Time> standstill(Time now) const;

private:
    struct Step
    {
        Time at;
        qint64 sent;
    };

    struct File
    {
        qint64 size;
        double fraction = 0;
        QString throughput = {};
    };

    std::vector<File> m_files;
    std::deque<Step> m_steps; ///< when the bytes grew, oldest first, as far back as the rate is taken
    qint64 m_bytesInAll = 0;
    Time m_lastMove{};
};

} // namespace tessary
