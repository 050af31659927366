#include "upload/TransferLog.h"

#include <QStringList>

#include <unicode/ubrk.h>

#include <cmath>
#include <vector>

using tessary::TransferLog;

namespace {

void require(bool holds)
{
    if (!holds) {
        __builtin_trap();
    }
}

/// Where each character begins, told by one forward pass and nothing clever.
std::vector<int32_t> characterStarts(const QString& text)
{
    UErrorCode status = U_ZERO_ERROR;
    UBreakIterator* characters = ubrk_open(UBRK_CHARACTER, "", reinterpret_cast<const UChar*>(text.utf16()),
                                           static_cast<int32_t>(text.size()), &status);
    require(U_SUCCESS(status));
    std::vector<int32_t> starts;
    for (int32_t at = ubrk_first(characters); at < text.size(); at = ubrk_next(characters)) {
        starts.push_back(at);
    }
    ubrk_close(characters);
    return starts;
}

QString lastCharacters(const QString& text)
{
    const std::vector<int32_t> starts = characterStarts(text);
    const auto limit = static_cast<std::size_t>(TransferLog::maxLogLength);
    return starts.size() <= limit ? text : text.mid(starts[starts.size() - limit]);
}

/// The chunks are cut at the byte 0xff, which no text holds; the first byte fills the log to about its limit.
QStringList chunks(const uint8_t* data, size_t size)
{
    QStringList all;
    if (size > 0) {
        const QString filling = data[0] % 2 == 0 ? QStringLiteral("x") : QString::fromUtf8("e\xcc\x81");
        all.append(filling.repeated(TransferLog::maxLogLength - data[0] / 2));
        --size;
        ++data;
    }
    for (const QByteArray& chunk :
         QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)).split('\xff')) {
        all.append(QString::fromUtf8(chunk));
    }
    return all;
}

bool isPlainText(const QString& chunk)
{
    return !chunk.contains(u'%') && !chunk.contains(QLatin1StringView("Log file is located at")) &&
           !chunk.contains(QLatin1StringView("Number of")) &&
           !chunk.contains(QLatin1StringView("A newer version"));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    TransferLog log;
    for (const QString& chunk : chunks(data, size)) {
        const QString before = log.logs();
        const double progress = log.progress();
        const TransferLog::Effect effect = log.processOutput(chunk);
        if (effect == TransferLog::Effect::Ignored) {
            require(log.logs() == before && !isPlainText(chunk));
        } else if (isPlainText(chunk)) {
            require(log.logs() == lastCharacters(before + chunk + u'\n'));
        } else {
            require(log.logs().endsWith(u'\n') && log.logs().contains(u'%'));
            require(characterStarts(log.logs()).size() <=
                    static_cast<std::size_t>(TransferLog::maxLogLength));
        }
        if (effect != TransferLog::Effect::LoggedWithProgress) {
            require(log.progress() == progress || (std::isnan(progress) && std::isnan(log.progress())));
        }
    }
    return 0;
}
