#include <gtest/gtest.h>

#include "calendar/month_grid.h"

namespace vt {
namespace {

struct MoveCase {
    const char* what;
    Date displayed;
    Date today;
    int button;
    Date expected;
};

class MoveDisplayed : public ::testing::TestWithParam<MoveCase> {};

TEST_P(MoveDisplayed, GivesTheNextDisplayedDate) {
    const MoveCase& c = GetParam();
    EXPECT_EQ(MoveDisplayedDate(c.displayed, c.today, c.button), c.expected) << c.what;
}

const Date kToday = MakeDate(13, 3, 2024);

INSTANTIATE_TEST_SUITE_P(
    Buttons, MoveDisplayed,
    ::testing::Values(
        MoveCase{"<< from 29 February", MakeDate(29, 2, 2024), kToday, 0, MakeDate(28, 2, 2023)},
        MoveCase{">> from 29 February", MakeDate(29, 2, 2024), kToday, 3, MakeDate(28, 2, 2025)},
        MoveCase{">> into a leap year stays on the 28th", MakeDate(28, 2, 2023), kToday, 3, MakeDate(28, 2, 2024)},
        MoveCase{"<< from today", kToday, kToday, 0, MakeDate(13, 3, 2023)},
        MoveCase{"+ from 31 January, leap year", MakeDate(31, 1, 2024), kToday, 2, MakeDate(29, 2, 2024)},
        MoveCase{"+ from 31 January", MakeDate(31, 1, 2023), kToday, 2, MakeDate(28, 2, 2023)},
        MoveCase{"+ from 31 March", MakeDate(31, 3, 2024), kToday, 2, MakeDate(30, 4, 2024)},
        MoveCase{"+ across the year", MakeDate(1, 12, 2024), kToday, 2, MakeDate(1, 1, 2025)},
        MoveCase{"+ from today", kToday, kToday, 2, MakeDate(13, 4, 2024)},
        MoveCase{"- on today's view goes to the 1st", kToday, kToday, 1, MakeDate(1, 3, 2024)},
        MoveCase{"- on today's view at the month's end", MakeDate(31, 3, 2024), MakeDate(31, 3, 2024), 1,
                 MakeDate(1, 3, 2024)},
        MoveCase{"- when today is the 1st", MakeDate(1, 3, 2024), MakeDate(1, 3, 2024), 1, MakeDate(1, 2, 2024)},
        MoveCase{"- on a 1st that is not today", MakeDate(1, 3, 2024), kToday, 1, MakeDate(1, 2, 2024)},
        MoveCase{"- on a day that is not today clamps", MakeDate(31, 3, 2024), kToday, 1, MakeDate(29, 2, 2024)},
        MoveCase{"- across the year", MakeDate(1, 1, 2025), kToday, 1, MakeDate(1, 12, 2024)},
        MoveCase{"centre button", MakeDate(1, 7, 2031), kToday, 4, kToday},
        MoveCase{"unknown button", MakeDate(1, 7, 2031), kToday, 5, MakeDate(1, 7, 2031)},
        MoveCase{"negative button", MakeDate(1, 7, 2031), kToday, -1, MakeDate(1, 7, 2031)},
        MoveCase{"<< stops at year 1", MakeDate(1, 6, 1), kToday, 0, MakeDate(1, 6, 1)},
        MoveCase{"- stops at year 1", MakeDate(1, 1, 1), kToday, 1, MakeDate(1, 1, 1)},
        MoveCase{">> stops at year 9999", MakeDate(1, 6, 9999), kToday, 3, MakeDate(1, 6, 9999)},
        MoveCase{"+ stops at year 9999", MakeDate(1, 12, 9999), kToday, 2, MakeDate(1, 12, 9999)}));

// A walk through the buttons as the user presses them, filling the grid after each press as
// the window does; the second "-" must move a whole month, not to the 1st again.
TEST(NavigationWalk, FromTodayBackAndForth) {
    const EntryList none;
    Date displayed = kToday;
    displayed = FillMonthGrid(MoveDisplayedDate(displayed, kToday, 1), kToday, none, none).displayed;
    EXPECT_EQ(displayed, MakeDate(1, 3, 2024));
    displayed = FillMonthGrid(MoveDisplayedDate(displayed, kToday, 1), kToday, none, none).displayed;
    EXPECT_EQ(displayed, MakeDate(1, 2, 2024));
    displayed = FillMonthGrid(MoveDisplayedDate(displayed, kToday, 3), kToday, none, none).displayed;
    EXPECT_EQ(displayed, MakeDate(1, 2, 2025));
    const MonthGrid back = FillMonthGrid(MoveDisplayedDate(displayed, kToday, 4), kToday, none, none);
    EXPECT_EQ(back.displayed, kToday);
    EXPECT_EQ(back.start, MakeDate(11, 3, 2024));
}

}  // namespace
}  // namespace vt
