#pragma once
#include <cstdint>

#include "store/dates.h"

namespace vt {

// The local wall-clock time of a moment given as seconds since 1970-01-01 00:00 UTC, by the
// process's time zone (TZ), the same rule the desktop's clock follows. File times and the
// recent-files list are kept in UTC; the access pages speak local time.
DateTime LocalFromEpochSeconds(std::int64_t seconds);

}  // namespace vt
