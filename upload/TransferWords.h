#pragma once

#include <QString>

#include <chrono>
#include <optional>

namespace tessary {

/// A number of bytes as people say it, in powers of ten: "812 GB", "1.5 GB".
[[nodiscard]] QString sizeInWords(qint64 bytes);

/// How many hundredths of the whole are done, rounded down: 100 only when all is. None of nothing.
[[nodiscard]] std::optional<int> percentOf(qint64 part, qint64 whole);

/// A time that is nearly over in words that stay as long as they are about right. A plain value: it remembers
/// what it said last.
class TimeLeftWords
{
public:
    /// Steps of a minute up to ten, of five up to two hours, and of ten beyond. What was said stays until the
    /// time is more than three quarters of a step away from it; less than a minute stays up to one and a
    /// quarter.
    void take(std::optional<std::chrono::milliseconds> left);

    /// "about 2 h 10 min", "less than a minute"; empty while nothing is known.
    [[nodiscard]] QString inFull() const;

    /// The same in its largest unit: "2 h left".
    [[nodiscard]] QString inBrief() const;

private:
    std::optional<int> m_minutes; ///< as said; 0 for less than one
};

/// "no progress for 3 min".
[[nodiscard]] QString standstillInWords(std::chrono::milliseconds still);

} // namespace tessary
