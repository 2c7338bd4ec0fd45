#pragma once
#include <chrono>

#include "platform/clock.h"

namespace vt {

// The desktop's local wall-clock time, as the user sees it on the task bar.
//
// The time zone is read again at most once per zoneRecheck. Reading it means looking at the
// zone file on disk, and the program asks for the time twice a second all day long: on a
// virtual machine those looks cost a fifth of the program's idle processor time. A change of
// the system's zone therefore shows within a minute; summer time needs no re-reading, the
// zone's rules already hold it.
class SystemClock : public Clock {
public:
    explicit SystemClock(std::chrono::steady_clock::duration zoneRecheck = std::chrono::minutes{1});
    DateTime Now() const override;

private:
    std::chrono::steady_clock::duration zone_recheck_;
    mutable std::chrono::steady_clock::time_point zone_read_at_{};
    mutable bool zone_read_ = false;
};

}  // namespace vt
