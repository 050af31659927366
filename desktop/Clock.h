#pragma once

#include <chrono>

namespace tessary::desktop {

/// Two times that never go back, whatever is done to the clock on the wall.
struct ClockReading
{
    std::chrono::milliseconds awake;  ///< passed while the computer was awake, from some origin
    std::chrono::milliseconds asleep; ///< passed while it slept, since it was started
};

[[nodiscard]] ClockReading readClock();

} // namespace tessary::desktop
