#include "agenda/recurrence.h"

#include <gtest/gtest.h>

#include <ostream>

#include "agenda/entries.h"
#include "entry_lists.h"
#include "scripted_dialogs.h"

namespace vt {
namespace {

// 15/03/2024 is a Friday.
const Date kFriday = MakeDate(15, 3, 2024);

struct SearchCase {
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

    friend void PrintTo(const SearchCase& c, std::ostream* os) { *os << c.name; }
};

class Searches : public ::testing::TestWithParam<SearchCase> {};

TEST_P(Searches, FindTheOccurrenceInRange) {
    const SearchCase& c = GetParam();
    test::ScriptedDialogs dialogs;
    Date date = c.start;
    EXPECT_EQ(NextOccurrence(date, c.count, c.unit, c.from, c.to, c.step, c.skip_today, kFriday, dialogs), c.expected);
    EXPECT_EQ(date, c.last_examined);
    EXPECT_TRUE(dialogs.Shown().empty());
}

INSTANTIATE_TEST_SUITE_P(
    Cases, Searches,
    ::testing::Values(
        SearchCase{"DailyOnFridayAfterLaunchGoesToMonday", kFriday, 1, "D", kFriday, kOpenEnd, 1, true,
                   MakeDate(18, 3, 2024), MakeDate(18, 3, 2024)},
        SearchCase{"DailyTodayAcceptedWithoutSkipToday", kFriday, 1, "D", kFriday, kOpenEnd, 1, false, kFriday,
                   kFriday},
        SearchCase{"DailyStoredOnSaturdayGoesToMonday", MakeDate(16, 3, 2024), 1, "D", kFriday, kOpenEnd, 1, true,
                   MakeDate(18, 3, 2024), MakeDate(18, 3, 2024)},
        SearchCase{"DailyBackwardsSkipsTheWeekend", MakeDate(17, 3, 2024), 1, "D", MakeDate(1, 3, 2024),
                   MakeDate(17, 3, 2024), -1, false, MakeDate(15, 3, 2024), MakeDate(15, 3, 2024)},
        SearchCase{"WeeklyOnSaturdayStaysOnSaturdays", MakeDate(9, 3, 2024), 7, "D", kFriday, kOpenEnd, 1, true,
                   MakeDate(16, 3, 2024), MakeDate(16, 3, 2024)},
        SearchCase{"TwoDaysMayFallOnAWeekend", MakeDate(16, 3, 2024), 2, "D", kFriday, kOpenEnd, 1, true,
                   MakeDate(16, 3, 2024), MakeDate(16, 3, 2024)},
        SearchCase{"MonthlyFrom31JanuaryFirstStep", MakeDate(31, 1, 2023), 1, "M", MakeDate(1, 2, 2023), kOpenEnd, 1,
                   false, MakeDate(28, 2, 2023), MakeDate(28, 2, 2023)},
        SearchCase{"MonthlyFrom31JanuaryKeepsThe28th", MakeDate(31, 1, 2023), 1, "M", MakeDate(1, 3, 2023), kOpenEnd, 1,
                   false, MakeDate(28, 3, 2023), MakeDate(28, 3, 2023)},
        SearchCase{"MonthlyFrom31JanuaryInALeapYear", MakeDate(31, 1, 2024), 1, "M", MakeDate(1, 3, 2024), kOpenEnd, 1,
                   false, MakeDate(29, 3, 2024), MakeDate(29, 3, 2024)},
        SearchCase{"QuarterlyBackwards", MakeDate(31, 5, 2024), 3, "M", MakeDate(1, 1, 2024), MakeDate(31, 3, 2024), -1,
                   false, MakeDate(29, 2, 2024), MakeDate(29, 2, 2024)},
        SearchCase{"YearlyFromLeapDayStaysOnThe28th", MakeDate(29, 2, 2024), 1, "A", MakeDate(1, 1, 2028), kOpenEnd, 1,
                   false, MakeDate(28, 2, 2028), MakeDate(28, 2, 2028)},
        SearchCase{"FourYearlyFromLeapDayKeepsThe29th", MakeDate(29, 2, 2024), 4, "A", MakeDate(1, 3, 2024), kOpenEnd,
                   1, false, MakeDate(29, 2, 2028), MakeDate(29, 2, 2028)},
        SearchCase{"BackwardsFromBeforeTheRangeEndsAtOnce", MakeDate(10, 3, 2024), 7, "D", MakeDate(20, 3, 2024),
                   MakeDate(31, 3, 2024), -1, false, std::nullopt, MakeDate(10, 3, 2024)},
        SearchCase{"BackwardsFindsTheLatestInRange", MakeDate(31, 3, 2024), 7, "D", MakeDate(1, 3, 2024),
                   MakeDate(20, 3, 2024), -1, false, MakeDate(17, 3, 2024), MakeDate(17, 3, 2024)},
        SearchCase{"ForwardsPastTheRangeIsEmpty", MakeDate(25, 3, 2024), 7, "D", MakeDate(1, 3, 2024),
                   MakeDate(20, 3, 2024), 1, false, std::nullopt, MakeDate(25, 3, 2024)},
        SearchCase{"ForwardsJumpingOverTheRangeIsEmpty", MakeDate(1, 1, 2024), 1, "A", MakeDate(1, 3, 2024),
                   MakeDate(30, 3, 2024), 1, false, std::nullopt, MakeDate(1, 1, 2025)},
        SearchCase{"CountZeroInsideTheRange", MakeDate(20, 3, 2024), 0, "D", kFriday, kOpenEnd, 1, true,
                   MakeDate(20, 3, 2024), MakeDate(20, 3, 2024)},
        SearchCase{"CountZeroBeforeTheRangeEnds", MakeDate(1, 3, 2024), 0, "D", kFriday, kOpenEnd, 1, true,
                   std::nullopt, MakeDate(1, 3, 2024)},
        SearchCase{"CountZeroOnASkippedTodayEnds", kFriday, 0, "D", kFriday, kOpenEnd, 1, true, std::nullopt, kFriday},
        SearchCase{"NegativeCountAwayFromTheRangeEnds", MakeDate(1, 3, 2024), -1, "M", kFriday, kOpenEnd, 1, false,
                   std::nullopt, MakeDate(1, 3, 2024)},
        SearchCase{"NegativeCountFromInsideStepsBack", kFriday, -1, "D", MakeDate(10, 3, 2024), kOpenEnd, 1, true,
                   MakeDate(14, 3, 2024), MakeDate(14, 3, 2024)},
        SearchCase{"StepZeroBeforeTheRangeEnds", MakeDate(1, 3, 2024), 1, "M", kFriday, kOpenEnd, 0, false,
                   std::nullopt, MakeDate(1, 3, 2024)},
        SearchCase{"LargerStepCountsAsItsSign", kFriday, 1, "D", kFriday, kOpenEnd, 5, true, MakeDate(18, 3, 2024),
                   MakeDate(18, 3, 2024)},
        SearchCase{"HugeCountEndsAtTheCalendarsEdge", MakeDate(1, 3, 2024), 2000000000, "D", kFriday, kOpenEnd, 1,
                   false, std::nullopt, MakeDate(1, 3, 2024)},
        SearchCase{"NoYearAfter9999", MakeDate(1, 1, 9999), 1, "A", MakeDate(31, 12, 9999), MakeDate(31, 12, 9999), 1,
                   false, std::nullopt, MakeDate(1, 1, 9999)},
        SearchCase{"DailyTenYearsBackReachesTheFirstWorkingDay", MakeDate(15, 3, 2014), 1, "D", kFriday, kOpenEnd, 1,
                   true, MakeDate(18, 3, 2024), MakeDate(18, 3, 2024)}),
    [](const auto& row) { return std::string(row.param.name); });

class UnknownUnit : public ::testing::Test {
protected:
    test::ScriptedDialogs dialogs;
};

TEST_F(UnknownUnit, SaysMalOnceAndEndsEmpty) {
    Date date = MakeDate(1, 3, 2024);
    EXPECT_EQ(NextOccurrence(date, 1, "X", kFriday, kOpenEnd, 1, false, kFriday, dialogs), std::nullopt);
    ASSERT_EQ(dialogs.Shown().size(), 1u);
    EXPECT_EQ(dialogs.Shown()[0].text, "MAL!");
    EXPECT_EQ(dialogs.Shown()[0].icon, MsgIcon::Exclamation);
    EXPECT_EQ(date, MakeDate(1, 3, 2024));
}

TEST_F(UnknownUnit, UnitsAreCaseSensitive) {
    Date date = MakeDate(1, 3, 2024);
    EXPECT_EQ(NextOccurrence(date, 1, "d", kFriday, kOpenEnd, 1, false, kFriday, dialogs), std::nullopt);
    EXPECT_EQ(dialogs.Texts(), std::vector<std::string>{"MAL!"});
}

TEST_F(UnknownUnit, IsNotNoticedWhenNoStepIsNeeded) {
    Date date = MakeDate(20, 3, 2024);
    EXPECT_EQ(NextOccurrence(date, 1, "X", kFriday, kOpenEnd, 1, false, kFriday, dialogs), MakeDate(20, 3, 2024));
    EXPECT_TRUE(dialogs.Shown().empty());
}

class AdvancingStoredAlarms : public ::testing::Test {
protected:
    test::ScriptedDialogs dialogs;
};

TEST_F(AdvancingStoredAlarms, MovesEachPastTodayRebuildsAndSorts) {
    EntryList alarms = test::ListOf({
        "15/03/2024 10:00 01 D 00 0 Diario, con coma",
        "15/03/2024 08:00 01 M 07 1 Mensual <010324>",
        "garbled",
        "20/03/2024 08:00 00 D 14 0 Una vez",
        "16/03/2024 09:00 07 D 00 0 Semanal",
        "15/03/2024 08:00 01 X 07 0 Raro",
    });
    AdvanceStoredAlarmDates(alarms, kFriday, dialogs);
    EXPECT_EQ(test::Items(alarms), (std::vector<std::string>{
                                       "15/03/2024 08:00 01 X 07 0 Raro",
                                       "16/03/2024 09:00 07 D 00 0 Semanal",
                                       "18/03/2024 10:00 01 D 00 0 Diario; con coma",
                                       "20/03/2024 08:00 00 D 14 0 Una vez",
                                       "15/04/2024 08:00 01 M 07 1 Mensual <010324>",
                                       "garbled",
                                   }));
    EXPECT_EQ(dialogs.Texts(), std::vector<std::string>{"MAL!"});
}

TEST_F(AdvancingStoredAlarms, MonthlyDriftIsWrittenBack) {
    EntryList alarms = test::ListOf({"31/01/2023 09:00 01 M 07 0 Alquiler"});
    AdvanceStoredAlarmDates(alarms, MakeDate(31, 1, 2023), dialogs);
    EXPECT_EQ(alarms[1], "28/02/2023 09:00 01 M 07 0 Alquiler");
    AdvanceStoredAlarmDates(alarms, MakeDate(28, 2, 2023), dialogs);
    EXPECT_EQ(alarms[1], "28/03/2023 09:00 01 M 07 0 Alquiler");
}

}  // namespace
}  // namespace vt
