#pragma once

#include <ctime>

namespace tessary::benchmarks {

/// Milliseconds of the clock that all processes of the machine share.
inline double monotonicMilliseconds()
{
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

} // namespace tessary::benchmarks
