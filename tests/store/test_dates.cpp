#include "store/dates.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "scripted_dialogs.h"
#include "store/entry_rules.h"

namespace vt {
namespace {

TEST(Dates, MonthAndYearStepsClampToTheLastDayOfTheMonth) {
    EXPECT_EQ(AddMonths(MakeDate(31, 1, 2023), 1), MakeDate(28, 2, 2023));
    EXPECT_EQ(AddMonths(MakeDate(31, 1, 2024), 1), MakeDate(29, 2, 2024));
    EXPECT_EQ(AddMonths(MakeDate(31, 3, 2024), -1), MakeDate(29, 2, 2024));
    EXPECT_EQ(AddMonths(MakeDate(30, 11, 2024), 2), MakeDate(30, 1, 2025));
    EXPECT_EQ(AddMonths(MakeDate(31, 12, 2024), -12), MakeDate(31, 12, 2023));
    EXPECT_EQ(AddYears(MakeDate(29, 2, 2024), 1), MakeDate(28, 2, 2025));
    EXPECT_EQ(AddYears(MakeDate(29, 2, 2024), 4), MakeDate(29, 2, 2028));
    EXPECT_EQ(AddDays(MakeDate(28, 2, 2024), 2), MakeDate(1, 3, 2024));
}

TEST(Dates, ParsingAcceptsOnlyRealDatesInTheirForm) {
    EXPECT_TRUE(ParseDate("29/02/2024"));
    EXPECT_TRUE(ParseDate("1/2/2024"));
    for (const char* text :
         {"29/02/2023", "31/04/2024", "00/01/2024", "01/13/2024", "01/01/24", "01/01/2024 ", "01-01-2024", ""}) {
        EXPECT_FALSE(ParseDate(text)) << text;
    }
}

TEST(Dates, WorkDateUsesTheTwoDigitCentury) {
    EXPECT_EQ(ParseWorkDate("05-03-50"), MakeDate(5, 3, 2050));
    EXPECT_EQ(ParseWorkDate("05-03-51"), MakeDate(5, 3, 1951));
    EXPECT_EQ(ParseWorkDate("05-03-2024"), MakeDate(5, 3, 2024));
    EXPECT_FALSE(ParseWorkDate("05/03/24"));
    EXPECT_FALSE(ParseWorkDate("30-02-24"));
    EXPECT_FALSE(ParseWorkDate("05-03-245"));
}

TEST(Dates, TimesOfDayAndDateTimes) {
    EXPECT_EQ(ParseTimeOfDay("7:45"), 465);
    EXPECT_EQ(ParseTimeOfDay("23:59"), 1439);
    for (const char* text : {"24:00", "12:60", "12:5", "1245"}) {
        EXPECT_FALSE(ParseTimeOfDay(text)) << text;
    }
    EXPECT_EQ(ParseDateTime("02/01/2024 09:05"), MakeDateTime(MakeDate(2, 1, 2024), 9, 5));
    EXPECT_EQ(ParseDateTime("02/01/2024"), MakeDateTime(MakeDate(2, 1, 2024)));
    EXPECT_FALSE(ParseDateTime("02/01/2024 09:05:60"));
}

// ---- what the user types in the date and time boxes -------------------------------------------

// What the user typed, and what it becomes; nullptr: refused with the message.
using TypedCases = std::vector<std::pair<const char*, const char*>>;

void ExpectRefusal(const test::ScriptedDialogs& dialogs, const char* result, const char* message) {
    ASSERT_EQ(dialogs.Texts(), result ? std::vector<std::string>{} : std::vector<std::string>{message});
    if (!result) {
        EXPECT_EQ(dialogs.Shown()[0].icon, MsgIcon::Exclamation);
    }
}

TEST(TimeEntry, CompletesTheDigitsOrRefusesWithTheMessage) {
    // clang-format off
    const TypedCases cases{{"", ""}, {"7", "07:00"}, {"08", "08:00"}, {"24", nullptr}, {"745", "07:45"},
        {"960", nullptr}, {"2359", "23:59"}, {"0000", "00:00"}, {"2400", nullptr}, {"1260", nullptr},
        {"07:45", nullptr}, {"7a", nullptr}, {" 745", nullptr}};
    // clang-format on
    for (const auto& [typed, expected] : cases) {
        SCOPED_TRACE(typed);
        test::ScriptedDialogs dialogs;
        const auto result = ValidateTimeEntry(typed, dialogs);
        EXPECT_EQ(result.value_or("refused"), expected ? expected : "refused");
        ExpectRefusal(dialogs, expected, "Formato no válido.");
    }
}

TEST(Ddmmyy, ConvertsOrRefusesWithTheMessage) {
    // clang-format off
    const TypedCases cases{{"290200", "29/02/2000"}, {"290201", nullptr}, {"010150", "01/01/2050"},
        {"010151", "01/01/1951"}, {"15032024", "15/03/2024"}, {"29021900", nullptr}, {"3112", nullptr},
        {"000124", nullptr}, {"011324", nullptr}, {"01-01-24", nullptr}, {"", nullptr}};
    // clang-format on
    for (const auto& [typed, expected] : cases) {
        SCOPED_TRACE(typed);
        test::ScriptedDialogs dialogs;
        EXPECT_EQ(ParseDdmmyy(typed, dialogs), expected ? expected : "");
        ExpectRefusal(dialogs, expected, "Formato no válido (ddmmyy).");
    }
}

TEST(TimeBox, FocusStripsEveryColonAndOnlyDigitsAndBackspacePass) {
    EXPECT_EQ(TimeBoxEditText("07:45"), "0745");
    EXPECT_EQ(TimeBoxEditText(":1:2:"), "12");
    for (char32_t key = 0; key < 128; ++key) {
        EXPECT_EQ(IsTimeBoxKey(key), key == 8 || (key >= '0' && key <= '9')) << static_cast<int>(key);
    }
    EXPECT_FALSE(IsTimeBoxKey(U'٣'));  // a digit of another script is no digit here
}

}  // namespace
}  // namespace vt
