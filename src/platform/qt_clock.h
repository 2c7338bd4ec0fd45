#pragma once
#include "platform/clock.h"

namespace vt {

// The desktop's local wall-clock time, as the user sees it on the task bar.
class QtClock : public Clock {
public:
    DateTime Now() const override;
};

}  // namespace vt
