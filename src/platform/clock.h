#pragma once
#include "store/dates.h"

namespace vt {

// The local wall clock. Nothing else in the program reads the system time, so tests can
// move time minute by minute.
class Clock {
public:
    virtual ~Clock() = default;
    virtual DateTime Now() const = 0;
};

inline Date Today(const Clock& clock) {
    return DateOf(clock.Now());
}

}  // namespace vt
