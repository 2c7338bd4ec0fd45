#include "store/dates.h"

#include <gtest/gtest.h>

namespace vt {
namespace {

TEST(Dates, FormatsPadWithZeros) {
    const DateTime moment = MakeDateTime(MakeDate(5, 3, 2024), 7, 4, 9);
    EXPECT_EQ(FormatDate(DateOf(moment)), "05/03/2024");
    EXPECT_EQ(FormatWorkDate(DateOf(moment)), "05-03-24");
    EXPECT_EQ(FormatTime(moment), "07:04");
    EXPECT_EQ(FormatDateTime(moment), "05/03/2024 07:04:09");
    EXPECT_EQ(FormatTimeOfDay(0), "00:00");
    EXPECT_EQ(FormatTimeOfDay(1439), "23:59");
    EXPECT_EQ(FormatWorkDate(MakeDate(1, 1, 2000)), "01-01-00");
}

TEST(Dates, WeekdayCountsFromMonday) {
    EXPECT_EQ(WeekdayMonday1(MakeDate(1, 1, 2024)), 1);  // a Monday
    EXPECT_EQ(WeekdayMonday1(MakeDate(6, 1, 2024)), 6);
    EXPECT_EQ(WeekdayMonday1(MakeDate(7, 1, 2024)), 7);
}

struct StepCase {
    Date from;
    int months;
    Date expected;
};

class MonthSteps : public ::testing::TestWithParam<StepCase> {};

TEST_P(MonthSteps, ClampToTheLastDayOfTheMonth) {
    EXPECT_EQ(AddMonths(GetParam().from, GetParam().months), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Cases, MonthSteps,
                         ::testing::Values(StepCase{MakeDate(31, 1, 2023), 1, MakeDate(28, 2, 2023)},
                                           StepCase{MakeDate(31, 1, 2024), 1, MakeDate(29, 2, 2024)},
                                           StepCase{MakeDate(31, 3, 2024), -1, MakeDate(29, 2, 2024)},
                                           StepCase{MakeDate(30, 11, 2024), 2, MakeDate(30, 1, 2025)},
                                           StepCase{MakeDate(31, 12, 2024), -12, MakeDate(31, 12, 2023)},
                                           StepCase{MakeDate(15, 6, 2024), 0, MakeDate(15, 6, 2024)}));

TEST(Dates, YearStepFromTheLeapDayClamps) {
    EXPECT_EQ(AddYears(MakeDate(29, 2, 2024), 1), MakeDate(28, 2, 2025));
    EXPECT_EQ(AddYears(MakeDate(29, 2, 2024), 4), MakeDate(29, 2, 2028));
    EXPECT_EQ(AddDays(MakeDate(28, 2, 2024), 2), MakeDate(1, 3, 2024));
}

struct ParseCase {
    const char* text;
    bool valid;
};

class DateParsing : public ::testing::TestWithParam<ParseCase> {};

TEST_P(DateParsing, AcceptsOnlyRealDatesInTheirForm) {
    EXPECT_EQ(ParseDate(GetParam().text).has_value(), GetParam().valid) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(Cases, DateParsing,
                         ::testing::Values(ParseCase{"29/02/2024", true}, ParseCase{"29/02/2023", false},
                                           ParseCase{"1/2/2024", true}, ParseCase{"31/04/2024", false},
                                           ParseCase{"00/01/2024", false}, ParseCase{"01/13/2024", false},
                                           ParseCase{"01/01/24", false}, ParseCase{"01/01/2024 ", false},
                                           ParseCase{"01-01-2024", false}, ParseCase{"", false},
                                           ParseCase{"aa/bb/cccc", false}));

TEST(Dates, WorkDateUsesTheTwoDigitCentury) {
    EXPECT_EQ(ParseWorkDate("05-03-24"), MakeDate(5, 3, 2024));
    EXPECT_EQ(ParseWorkDate("05-03-50"), MakeDate(5, 3, 2050));
    EXPECT_EQ(ParseWorkDate("05-03-51"), MakeDate(5, 3, 1951));
    EXPECT_EQ(ParseWorkDate("05-03-2024"), MakeDate(5, 3, 2024));
    EXPECT_FALSE(ParseWorkDate("05/03/24"));
    EXPECT_FALSE(ParseWorkDate("30-02-24"));
    EXPECT_FALSE(ParseWorkDate("05-03-245"));
}

TEST(Dates, TimesOfDay) {
    EXPECT_EQ(ParseTimeOfDay("07:45"), 465);
    EXPECT_EQ(ParseTimeOfDay("7:45"), 465);
    EXPECT_EQ(ParseTimeOfDay("23:59"), 1439);
    EXPECT_FALSE(ParseTimeOfDay("24:00"));
    EXPECT_FALSE(ParseTimeOfDay("12:60"));
    EXPECT_FALSE(ParseTimeOfDay("12:5"));
    EXPECT_FALSE(ParseTimeOfDay("1245"));
}

TEST(Dates, DateTimesWithAndWithoutTheTimePart) {
    EXPECT_EQ(ParseDateTime("02/01/2024 09:05:07"), MakeDateTime(MakeDate(2, 1, 2024), 9, 5, 7));
    EXPECT_EQ(ParseDateTime("02/01/2024 09:05"), MakeDateTime(MakeDate(2, 1, 2024), 9, 5));
    EXPECT_EQ(ParseDateTime("02/01/2024"), MakeDateTime(MakeDate(2, 1, 2024)));
    EXPECT_FALSE(ParseDateTime("02/01/2024 25:00:00"));
    EXPECT_FALSE(ParseDateTime("02/01/2024 09:05:60"));
    EXPECT_FALSE(ParseDateTime("02/01/2024T09:05:07"));
    EXPECT_EQ(FormatDateTime(NeverScanned()), "01/01/1901 00:00:00");
    const DateTime moment = MakeDateTime(MakeDate(31, 12, 2099), 23, 59, 59);
    EXPECT_EQ(ParseDateTime(FormatDateTime(moment)), moment);
}

}  // namespace
}  // namespace vt
