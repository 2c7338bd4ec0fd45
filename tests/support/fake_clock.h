#pragma once
#include "platform/clock.h"

namespace vt::test {

// A clock that stands still until the test moves it.
class FakeClock : public Clock {
public:
    FakeClock() : now_(MakeDateTime(MakeDate(2, 1, 2024), 9, 0)) {}
    explicit FakeClock(DateTime now) : now_(now) {}

    DateTime Now() const override { return now_; }

    void Set(DateTime now) { now_ = now; }
    void Set(int day, int month, int year, int hour = 0, int minute = 0, int second = 0) {
        now_ = MakeDateTime(MakeDate(day, month, year), hour, minute, second);
    }
    void AdvanceSeconds(int n) { now_ += std::chrono::seconds{n}; }

private:
    DateTime now_;
};

}  // namespace vt::test
