#include "upload/TransferLog.h"

#include <benchmark/benchmark.h>

#include <unicode/ubrk.h>

using tessary::TransferLog;

namespace {

QString filling(benchmark::State& state)
{
    return state.range(0) == 0 ? QStringLiteral("x") : QString::fromUtf8("e\xcc\x81");
}

/// The limit: one pass over the characters of a full log.
void onePass(benchmark::State& state)
{
    const QString text = filling(state).repeated(TransferLog::maxLogLength);
    UErrorCode status = U_ZERO_ERROR;
    UBreakIterator* characters = ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &status);
    for (auto _ : state) {
        ubrk_setText(characters, reinterpret_cast<const UChar*>(text.utf16()),
                     static_cast<int32_t>(text.size()), &status);
        int count = 0;
        for (ubrk_first(characters); ubrk_next(characters) != UBRK_DONE; ++count) {
        }
        benchmark::DoNotOptimize(count);
    }
    ubrk_close(characters);
}

void processOutputOnAFullLog(benchmark::State& state)
{
    TransferLog log;
    log.processOutput(filling(state).repeated(TransferLog::maxLogLength));
    const QString report =
        QStringLiteral("\r45.5 %, 3 Done, 0 Failed, 1 Pending, 2-sec Throughput (Mb/s): 951.6356");
    const QString plain = filling(state).repeated(30); // keeps the log's kind of text
    bool even = false;
    for (auto _ : state) {
        even = !even;
        log.processOutput(even || state.range(0) != 0 ? plain : report);
        qsizetype length = log.logs().size();
        benchmark::DoNotOptimize(length);
    }
}

} // namespace

BENCHMARK(onePass)->ArgName("combining")->Arg(0)->Arg(1);
BENCHMARK(processOutputOnAFullLog)->ArgName("combining")->Arg(0)->Arg(1);
BENCHMARK_MAIN();
