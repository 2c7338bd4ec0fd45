#include "platform/system_clock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

namespace vt {
namespace {

using namespace std::chrono_literals;

// Zones written as POSIX rules, so that no zone database is needed: "<+14>-14" is fourteen
// hours east of Greenwich, "<-0930>+9:30" nine and a half hours west.
class SystemClockTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (const char* zone = std::getenv("TZ")) {
            saved_zone_ = zone;
        }
        SetZone("UTC0");
    }
    void TearDown() override {
        if (saved_zone_) {
            setenv("TZ", saved_zone_->c_str(), 1);
        } else {
            unsetenv("TZ");
        }
        tzset();
    }
    static void SetZone(const char* zone) { setenv("TZ", zone, 1); }

    // Checks that clock.Now() is the system time shifted by offset; the clock is read between
    // two readings of the system time, so a second that turns meanwhile does no harm.
    static void ExpectNowAt(const SystemClock& clock, std::chrono::seconds offset) {
        const std::time_t before = std::time(nullptr);
        const DateTime now = clock.Now();
        const std::time_t after = std::time(nullptr);
        const auto at = [offset](std::time_t t) { return DateTime{std::chrono::seconds{t} + offset}; };
        EXPECT_TRUE(now >= at(before) && now <= at(after))
            << FormatDateTime(now) << " is not between " << FormatDateTime(at(before)) << " and "
            << FormatDateTime(at(after));
    }

private:
    std::optional<std::string> saved_zone_;
};

TEST_F(SystemClockTest, GivesTheLocalTimeOfTheSystemZone) {
    ExpectNowAt(SystemClock{}, 0s);
    SetZone("<+14>-14");
    ExpectNowAt(SystemClock{}, 14h);
    SetZone("<-0930>+9:30");
    ExpectNowAt(SystemClock{}, -(9h + 30min));
}

TEST_F(SystemClockTest, AChangedZoneShowsAtTheNextRecheckAndNotBefore) {
    const SystemClock every_time{0s};
    const SystemClock hourly{1h};
    ExpectNowAt(every_time, 0s);
    ExpectNowAt(hourly, 0s);

    SetZone("<+14>-14");
    ExpectNowAt(hourly, 0s);  // read an hour ago at most: the zone it knew still holds
    ExpectNowAt(every_time, 14h);
}

}  // namespace
}  // namespace vt
