#include "agenda/recurrence.h"

#include <gtest/gtest.h>

#include "agenda/entries.h"
#include "entry_lists.h"
#include "scripted_dialogs.h"

namespace vt {
namespace {

// A day of March 2024, or of another year.
Date D(int day, int month = 3, int year = 2024) {
    return MakeDate(day, month, year);
}

// 15/03/2024 is a Friday.
const Date kFriday = D(15);

// A count of zero before the range never reaches it: the search must still end.
TEST(NextOccurrence, FindsTheOccurrenceInRange) {
    const std::nullopt_t kNone = std::nullopt;
    const struct {
        const char* name;
        Date start;
        int count;
        const char* unit;
        Date from;
        Date to;
        int step;
        bool skip_today;
        std::optional<Date> expected;
        Date last_examined;
    } cases[] = {
        {"DailyOnFridayGoesToMonday", kFriday, 1, "D", kFriday, kOpenEnd, 1, true, D(18), D(18)},
        {"DailyStoredOnSaturday", D(16), 1, "D", kFriday, kOpenEnd, 1, true, D(18), D(18)},
        {"WeeklyOnSaturdayStays", D(9), 7, "D", kFriday, kOpenEnd, 1, true, D(16), D(16)},
        {"MonthlyFrom31JanuaryKeepsThe28th", D(31, 1, 2023), 1, "M", D(1, 3, 2023), kOpenEnd, 1, false, D(28, 3, 2023),
         D(28, 3, 2023)},
        {"MonthlyFrom31JanuaryInALeapYear", D(31, 1), 1, "M", D(1), kOpenEnd, 1, false, D(29), D(29)},
        {"YearlyFromLeapDayStaysOnThe28th", D(29, 2), 1, "A", D(1, 1, 2028), kOpenEnd, 1, false, D(28, 2, 2028),
         D(28, 2, 2028)},
        {"BackwardsFindsTheLatestInRange", D(31), 7, "D", D(1), D(20), -1, false, D(17), D(17)},
        {"CountZeroInsideTheRange", D(20), 0, "D", kFriday, kOpenEnd, 1, true, D(20), D(20)},
        {"CountZeroBeforeTheRange", D(1), 0, "D", kFriday, kOpenEnd, 1, true, kNone, D(1)},
        {"DailyBackwardsSkipsTheWeekend", D(17), 1, "D", D(1), D(17), -1, false, D(15), D(15)},
        {"TwoDaysMayFallOnAWeekend", D(16), 2, "D", kFriday, kOpenEnd, 1, true, D(16), D(16)},
        {"FourYearlyFromLeapDayKeepsThe29th", D(29, 2), 4, "A", D(1), kOpenEnd, 1, false, D(29, 2, 2028),
         D(29, 2, 2028)},
        // The searches that find nothing must end all the same, and where they stopped shows.
        {"BackwardsFromBeforeTheRangeEndsAtOnce", D(10), 7, "D", D(20), D(31), -1, false, kNone, D(10)},
        {"ForwardsJumpingOverTheRange", D(1, 1), 1, "A", D(1), D(30), 1, false, kNone, D(1, 1, 2025)},
        {"CountZeroOnASkippedToday", kFriday, 0, "D", kFriday, kOpenEnd, 1, true, kNone, kFriday},
        {"NegativeCountAwayFromTheRange", D(1), -1, "M", kFriday, kOpenEnd, 1, false, kNone, D(1)},
        {"StepZeroBeforeTheRange", D(1), 1, "M", kFriday, kOpenEnd, 0, false, kNone, D(1)},
        {"HugeCountEndsAtTheCalendarsEdge", D(1), 2000000000, "D", kFriday, kOpenEnd, 1, false, kNone, D(1)},
        {"NoYearAfter9999", D(1, 1, 9999), 1, "A", D(31, 12, 9999), D(31, 12, 9999), 1, false, kNone, D(1, 1, 9999)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        test::ScriptedDialogs dialogs;
        Date date = c.start;
        EXPECT_EQ(NextOccurrence(date, c.count, c.unit, c.from, c.to, c.step, c.skip_today, kFriday, dialogs),
                  c.expected);
        EXPECT_EQ(date, c.last_examined);
        EXPECT_TRUE(dialogs.Shown().empty());
    }
}

// Units are case-sensitive; an unknown one is noticed only when a step is needed.
TEST(UnknownUnit, SaysMalOnlyWhenAStepIsNeeded) {
    test::ScriptedDialogs dialogs;
    Date date = D(1);
    EXPECT_EQ(NextOccurrence(date, 1, "d", kFriday, kOpenEnd, 1, false, kFriday, dialogs), std::nullopt);
    date = D(20);
    EXPECT_EQ(NextOccurrence(date, 1, "X", kFriday, kOpenEnd, 1, false, kFriday, dialogs), D(20));
    ASSERT_EQ(dialogs.Texts(), std::vector<std::string>{"MAL!"});
    EXPECT_EQ(dialogs.Shown()[0].icon, MsgIcon::Exclamation);
}

TEST(AdvancingStoredAlarms, MovesEachPastTodayRebuildsAndSorts) {
    test::ScriptedDialogs dialogs;
    EntryList alarms = test::ListOf({
        "15/03/2024 10:00 01 D 00 0 Diario, con coma",
        "15/03/2024 08:00 01 M 07 1 Mensual <010324>",
        "garbled",
        "20/03/2024 08:00 00 D 14 0 Una vez",
        "15/03/2024 08:00 01 X 07 0 Raro",
    });
    AdvanceStoredAlarmDates(alarms, kFriday, dialogs);
    EXPECT_EQ(test::Items(alarms), (std::vector<std::string>{
                                       "15/03/2024 08:00 01 X 07 0 Raro",
                                       "18/03/2024 10:00 01 D 00 0 Diario; con coma",
                                       "20/03/2024 08:00 00 D 14 0 Una vez",
                                       "15/04/2024 08:00 01 M 07 1 Mensual <010324>",
                                       "garbled",
                                   }));
    EXPECT_EQ(dialogs.Texts(), std::vector<std::string>{"MAL!"});

    // The drift of a monthly alarm from the 31st is written back, so it stays on the 28th.
    alarms = test::ListOf({"31/01/2023 09:00 01 M 07 0 Alquiler"});
    AdvanceStoredAlarmDates(alarms, D(31, 1, 2023), dialogs);
    AdvanceStoredAlarmDates(alarms, D(28, 2, 2023), dialogs);
    EXPECT_EQ(test::Items(alarms), std::vector<std::string>{"28/03/2023 09:00 01 M 07 0 Alquiler"});
}

}  // namespace
}  // namespace vt
