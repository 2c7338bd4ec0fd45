#include "store/entry_rules.h"

#include <gtest/gtest.h>

#include "scripted_dialogs.h"

namespace vt {
namespace {

struct TimeCase {
    const char* typed;
    const char* completed;  // nullptr: refused
};

class TimeEntry : public ::testing::TestWithParam<TimeCase> {};

TEST_P(TimeEntry, CompletesTheDigitsOrRefusesWithTheMessage) {
    test::ScriptedDialogs dialogs;
    const auto result = ValidateTimeEntry(GetParam().typed, dialogs);
    if (GetParam().completed == nullptr) {
        EXPECT_FALSE(result.has_value());
        ASSERT_EQ(dialogs.Shown().size(), 1u);
        EXPECT_EQ(dialogs.Shown()[0].text, "Formato no válido.");
        EXPECT_EQ(dialogs.Shown()[0].icon, MsgIcon::Exclamation);
    } else {
        EXPECT_EQ(result, std::string(GetParam().completed));
        EXPECT_TRUE(dialogs.Shown().empty());
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, TimeEntry,
                         ::testing::Values(TimeCase{"", ""}, TimeCase{"7", "07:00"}, TimeCase{"8", "08:00"},
                                           TimeCase{"08", "08:00"}, TimeCase{"23", "23:00"}, TimeCase{"24", nullptr},
                                           TimeCase{"745", "07:45"}, TimeCase{"830", "08:30"}, TimeCase{"960", nullptr},
                                           TimeCase{"0745", "07:45"}, TimeCase{"2359", "23:59"},
                                           TimeCase{"0000", "00:00"}, TimeCase{"2400", nullptr},
                                           TimeCase{"1260", nullptr}, TimeCase{"12345", nullptr},
                                           TimeCase{"07:45", nullptr}, TimeCase{"7a", nullptr},
                                           TimeCase{" 745", nullptr}));

TEST(TimeBoxText, FocusStripsEveryColon) {
    EXPECT_EQ(TimeBoxEditText("07:45"), "0745");
    EXPECT_EQ(TimeBoxEditText(":1:2:"), "12");
    EXPECT_EQ(TimeBoxEditText(""), "");
}

TEST(TimeBoxKeys, OnlyDigitsAndBackspacePass) {
    for (char32_t key = 0; key < 128; ++key) {
        const bool expected = key == 8 || (key >= '0' && key <= '9');
        EXPECT_EQ(IsTimeBoxKey(key), expected) << static_cast<int>(key);
    }
    EXPECT_FALSE(IsTimeBoxKey(U'٣'));  // a digit of another script is no digit here
}

struct DdmmyyCase {
    const char* typed;
    const char* converted;  // nullptr: refused
};

class Ddmmyy : public ::testing::TestWithParam<DdmmyyCase> {};

TEST_P(Ddmmyy, ConvertsOrRefusesWithTheMessage) {
    test::ScriptedDialogs dialogs;
    const std::string result = ParseDdmmyy(GetParam().typed, dialogs);
    if (GetParam().converted == nullptr) {
        EXPECT_EQ(result, "");
        ASSERT_EQ(dialogs.Shown().size(), 1u);
        EXPECT_EQ(dialogs.Shown()[0].text, "Formato no válido (ddmmyy).");
        EXPECT_EQ(dialogs.Shown()[0].icon, MsgIcon::Exclamation);
        EXPECT_EQ(dialogs.Shown()[0].buttons, MsgButtons::Ok);
    } else {
        EXPECT_EQ(result, GetParam().converted);
        EXPECT_TRUE(dialogs.Shown().empty());
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, Ddmmyy,
                         ::testing::Values(DdmmyyCase{"290200", "29/02/2000"}, DdmmyyCase{"290201", nullptr},
                                           DdmmyyCase{"010150", "01/01/2050"}, DdmmyyCase{"010151", "01/01/1951"},
                                           DdmmyyCase{"311299", "31/12/1999"}, DdmmyyCase{"010100", "01/01/2000"},
                                           DdmmyyCase{"15032024", "15/03/2024"}, DdmmyyCase{"29021900", nullptr},
                                           DdmmyyCase{"29022000", "29/02/2000"}, DdmmyyCase{"3112", nullptr},
                                           DdmmyyCase{"0101501", nullptr}, DdmmyyCase{"000124", nullptr},
                                           DdmmyyCase{"011324", nullptr}, DdmmyyCase{"01-01-24", nullptr},
                                           DdmmyyCase{"01012 4", nullptr}, DdmmyyCase{"", nullptr},
                                           DdmmyyCase{"01010000", nullptr}));

}  // namespace
}  // namespace vt
