#include "platform/system_clock.h"

#include <ctime>

namespace vt {

SystemClock::SystemClock(std::chrono::steady_clock::duration zoneRecheck) : zone_recheck_(zoneRecheck) {}

DateTime SystemClock::Now() const {
    const auto now = std::chrono::steady_clock::now();
    if (!zone_read_ || now - zone_read_at_ >= zone_recheck_) {
        tzset();
        zone_read_ = true;
        zone_read_at_ = now;
    }
    // One reading split into date and time, so that a tick at midnight cannot pair yesterday's
    // date with today's time.
    const std::time_t seconds = std::time(nullptr);
    std::tm local{};
    localtime_r(&seconds, &local);
    return MakeDateTime(MakeDate(local.tm_mday, local.tm_mon + 1, local.tm_year + 1900), local.tm_hour, local.tm_min,
                        local.tm_sec);
}

}  // namespace vt
