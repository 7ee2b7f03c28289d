#include "platform/desktop/clock.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <thread>

namespace veldona {

DateTime SystemClock::now() {
    const std::time_t instant = std::time(nullptr);
    std::tm local{};
    localtime_r(&instant, &local);
    // A leap second has no room in a day of ours.
    return DateTime::of(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                        std::min(local.tm_sec, 59));
}

void SystemClock::wait(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

} // namespace veldona
