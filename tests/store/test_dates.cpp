#include "store/dates.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "scripted_dialogs.h"
#include "store/entry_rules.h"

namespace vt {
namespace {

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

}  // namespace
}  // namespace vt
