#include "desktop/Clock.h"

#include <ctime>

namespace tessary::desktop {
namespace {

std::chrono::milliseconds read(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::seconds(time.tv_sec) +
                                                                 std::chrono::nanoseconds(time.tv_nsec));
}

} // namespace

ClockReading readClock()
{
    const auto awake = read(CLOCK_MONOTONIC);
    return {awake, read(CLOCK_BOOTTIME) - awake};
}

} // namespace tessary::desktop
