#include "upload/TransferWords.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tessary {
namespace {

constexpr int minutesPerHour = 60;

double inMinutes(std::chrono::milliseconds time)
{
    return std::chrono::duration<double, std::ratio<minutesPerHour>>(time).count();
}

int stepAt(double minutes)
{
    constexpr int fewMinutes = 10;
    constexpr int fewHours = 2 * minutesPerHour;
    return minutes < fewMinutes ? 1 : minutes < fewHours ? 5 : 10;
}

} // namespace

QString sizeInWords(qint64 bytes)
{
    constexpr std::array units{"bytes", "kB", "MB", "GB", "TB", "PB", "EB"};
    constexpr double thousand = 1000;
    constexpr double roundsToThousand = 999.5;
    constexpr double roundsToTen = 9.95;
    auto number = static_cast<double>(bytes);
    std::size_t unit = 0;
    while (number >= roundsToThousand) {
        number /= thousand;
        ++unit;
    }
    QString digits = QString::number(number, 'f', number < roundsToTen ? 1 : 0);
    if (digits.endsWith(QLatin1StringView(".0"))) {
        digits.chop(2);
    }
    return digits + u' ' + QLatin1StringView(units.at(unit));
}

std::optional<int> percentOf(qint64 part, qint64 whole)
{
    constexpr int all = 100;
    constexpr double rounding = 1e-6; // 45 % of a number of bytes is no whole number
    if (whole == 0) {
        return std::nullopt;
    }
    // In floating point: a hundred times the bytes of a file can be more than an integer holds.
    return std::clamp(static_cast<int>(std::floor(double(part) * all / double(whole) + rounding)), 0, all);
}

void TimeLeftWords::take(std::optional<std::chrono::milliseconds> left)
{
    if (!left) {
        m_minutes.reset();
        return;
    }
    constexpr double near = 0.75;
    constexpr double nearlyOne = 1.25;
    const double minutes = inMinutes(*left);
    const int step = stepAt(minutes);
    const bool isStillRight =
        m_minutes && (*m_minutes == 0 ? minutes <= nearlyOne
                                      : minutes >= 1 && std::abs(minutes - *m_minutes) <= near * step);
    if (isStillRight) {
        return;
    }
    m_minutes = minutes < 1 ? 0 : static_cast<int>(std::lround(minutes / step)) * step;
}

QString TimeLeftWords::inFull() const
{
    if (!m_minutes) {
        return {};
    }
    if (*m_minutes == 0) {
        return QStringLiteral("less than a minute");
    }
    const int hours = *m_minutes / minutesPerHour;
    const int minutes = *m_minutes % minutesPerHour;
    QString words = QStringLiteral("about");
    if (hours > 0) {
        words += QStringLiteral(" %1 h").arg(hours);
    }
    if (minutes > 0) {
        words += QStringLiteral(" %1 min").arg(minutes);
    }
    return words;
}

QString TimeLeftWords::inBrief() const
{
    if (!m_minutes) {
        return {};
    }
    if (*m_minutes == 0) {
        return QStringLiteral("less than a minute left");
    }
    return *m_minutes < minutesPerHour
               ? QStringLiteral("%1 min left").arg(*m_minutes)
               : QStringLiteral("%1 h left").arg(std::lround(double(*m_minutes) / minutesPerHour));
}

QString standstillInWords(std::chrono::milliseconds still)
{
    return QStringLiteral("no progress for %1 min")
        .arg(std::chrono::floor<std::chrono::minutes>(still).count());
}

} // namespace tessary
