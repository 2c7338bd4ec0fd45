#include "accesslog/local_time.h"

#include <algorithm>
#include <ctime>

namespace vt {

namespace {

// 0001-01-01 00:00:00 and 9999-12-31 23:59:59 UTC. A file time outside these years is bogus;
// held at the edge it is still skipped as too old or refused as a future date.
constexpr std::int64_t kEarliest = -62135596800;
constexpr std::int64_t kLatest = 253402300799;

}  // namespace

DateTime LocalFromEpochSeconds(std::int64_t seconds) {
    const auto t = static_cast<std::time_t>(std::clamp(seconds, kEarliest, kLatest));
    std::tm local{};
    if (localtime_r(&t, &local) == nullptr) {
        return DateTime{std::chrono::seconds{t}};  // no zone rules to apply: taken as UTC
    }
    return MakeDateTime(MakeDate(local.tm_mday, local.tm_mon + 1, local.tm_year + 1900), local.tm_hour, local.tm_min,
                        local.tm_sec);
}

}  // namespace vt
