#include "upload/TransferLog.h"

#include <QByteArray>

#include <unicode/ubrk.h>

#include <array>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

namespace tessary {
namespace {

const QString rateMark = QStringLiteral("(Mb/s): ");
constexpr QLatin1StringView logFileMark("Log file is located at");

bool isChatter(const QString& text)
{
    return text.contains(logFileMark) || text.contains(QLatin1StringView("Number of")) ||
           text.contains(QLatin1StringView("A newer version"));
}

/// Reads the whole text as a number, whatever the user's locale; 0 for any text that is none.
double readNumber(const QString& text)
{
    static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    const QByteArray bytes = text.toUtf8();
    constexpr QByteArrayView whiteSpace(" \t\n\v\f\r");
    if (bytes.isEmpty() || whiteSpace.contains(bytes.front())) {
        return 0;
    }
    char* end = nullptr;
    const double number = strtod_l(bytes.constData(), &end, plain);
    return end == bytes.cend() ? number : 0;
}

/// The shortest decimal form that reads back as the same number, with at least one digit after the point.
QString writeNumber(double number)
{
    if (std::isnan(number)) {
        return QStringLiteral("nan");
    }
    // The longest is the smallest denormal: a sign, "0.", 323 zeros and a digit.
    std::array<char, 400> buffer{};
    const auto written = std::to_chars(buffer.begin(), buffer.end(), number, std::chars_format::fixed);
    const QString text = QString::fromLatin1(buffer.data(), written.ptr - buffer.data());
    return std::isinf(number) || text.contains(u'.') ? text : text + QLatin1StringView(".0");
}

double readPercentage(const QString& report)
{
    QStringView number(report);
    if (const qsizetype mark = number.indexOf(QLatin1StringView(" %")); mark >= 0) {
        number.truncate(mark);
    }
    while (number.startsWith(u'\r')) {
        number = number.sliced(1);
    }
    while (number.endsWith(u'\r')) {
        number.chop(1);
    }
    return readNumber(number.toString());
}

std::optional<QString> readThroughput(const QString& report)
{
    // What follows the first one, up to the next.
    return report.contains(rateMark) ? std::optional(report.section(rateMark, 1, 1)) : std::nullopt;
}

QString progressEntry(const TransferReport& report)
{
    QString entry = writeNumber(report.percentage) + u'%';
    if (report.throughput) {
        entry += QLatin1StringView(": ") + *report.throughput + QLatin1StringView(" (Mb/s)");
    }
    return entry + u'\n';
}

/// Where the last `count` characters begin, if that can be told without the segmenter. Below U+0300 every
/// code unit is a character of its own, but for the pair of carriage return and line feed.
std::optional<qsizetype> beginOfLastPlain(const QString& text, int count)
{
    constexpr char16_t firstCombining = 0x0300;
    const auto isPlain = [&text](qsizetype at) { return text.at(at).unicode() < firstCombining; };
    qsizetype begin = text.size();
    for (int found = 0; found < count && begin > 0; ++found) {
        --begin;
        if (!isPlain(begin)) {
            return std::nullopt;
        }
        if (text.at(begin) == u'\n' && begin > 0 && text.at(begin - 1) == u'\r') {
            --begin;
        }
    }
    // What stands before the cut could still join the first character after it.
    return begin == 0 || isPlain(begin - 1) ? std::optional(begin) : std::nullopt;
}

/// Where the last `count` user-perceived characters begin; 0 when there are no more than that.
qsizetype beginOfLast(const QString& text, int count)
{
    if (text.size() <= count) {
        return 0;
    }
    if (const std::optional<qsizetype> begin = beginOfLastPlain(text, count)) {
        return *begin;
    }
    // Opening a segmenter costs far more than a pass with one.
    UErrorCode status = U_ZERO_ERROR;
    static const std::unique_ptr<UBreakIterator, decltype(&ubrk_close)> characters(
        ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &status), &ubrk_close);
    if (!characters || text.size() > std::numeric_limits<int32_t>::max()) {
        return text.size() - count;
    }
    ubrk_setText(characters.get(), reinterpret_cast<const UChar*>(text.utf16()),
                 static_cast<int32_t>(text.size()), &status);
    // Forwards, since the segmenter walks backwards at about half the speed.
    std::vector<int32_t> begins;
    begins.reserve(static_cast<std::size_t>(text.size()));
    for (int32_t at = ubrk_first(characters.get()); at < text.size(); at = ubrk_next(characters.get())) {
        begins.push_back(at);
    }
    const auto wanted = static_cast<std::size_t>(count);
    return begins.size() <= wanted ? 0 : begins.at(begins.size() - wanted);
}

} // namespace

std::optional<TransferReport> readTransferReport(const QString& text)
{
    if (isChatter(text) || !text.contains(u'%')) {
        return std::nullopt;
    }
    return TransferReport{readPercentage(text), readThroughput(text)};
}

QString readLogFilePath(const QString& text)
{
    const qsizetype mark = text.indexOf(logFileMark);
    if (mark < 0) {
        return {};
    }
    const QStringView rest = QStringView(text).sliced(mark + logFileMark.size());
    const qsizetype end = rest.indexOf(u'\n');
    QStringView path = (end < 0 ? rest : rest.first(end)).trimmed();
    if (path.startsWith(u':')) {
        path = path.sliced(1).trimmed();
    }
    return path.toString();
}

void TransferLog::clear()
{
    m_logs.clear();
    m_progress = 0;
}

TransferLog::Effect TransferLog::processOutput(const QString& text)
{
    if (isChatter(text)) {
        return Effect::Ignored;
    }
    const std::optional<TransferReport> report = readTransferReport(text);
    if (!report) {
        append(text + u'\n');
        return Effect::Logged;
    }
    append(progressEntry(*report));
    if (report->percentage == 0) {
        return Effect::Logged;
    }
    constexpr double whole = 100;
    m_progress = report->percentage / whole;
    return Effect::LoggedWithProgress;
}

void TransferLog::append(const QString& entry)
{
    const QString all = m_logs + entry;
    // A copy: a text that is cut at its front keeps the room before it, and takes as much more at each
    // growth.
    m_logs = all.sliced(beginOfLast(all, maxLogLength));
}

} // namespace tessary
