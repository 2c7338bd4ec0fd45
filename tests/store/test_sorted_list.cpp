#include "store/sorted_list.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vt {
namespace {

using Items = std::vector<std::string>;

struct AddCase {
    const char* name;
    Items before;  // added one by one with the same switches
    const char* item;
    bool sorted;
    bool duplicates;
    bool ignore_case;
    Items after;  // without slot 0
};

class AgregarAListaRules : public ::testing::TestWithParam<AddCase> {};

TEST_P(AgregarAListaRules, PlacesOrRefusesTheItem) {
    const AddCase& c = GetParam();
    std::vector<std::string> list(1);
    for (const auto& item : c.before) {
        AgregarALista(list, item, c.sorted, c.duplicates, c.ignore_case);
    }
    AgregarALista(list, c.item, c.sorted, c.duplicates, c.ignore_case);
    ASSERT_FALSE(list.empty());
    EXPECT_EQ(list[0], "") << "slot 0 is never used";
    EXPECT_EQ(Items(list.begin() + 1, list.end()), c.after);
}

INSTANTIATE_TEST_SUITE_P(
    Table, AgregarAListaRules,
    ::testing::Values(
        AddCase{"UnsortedAppends", {"b", "a"}, "0", false, true, false, {"b", "a", "0"}},
        AddCase{"SortedGoesBeforeFirstGreater", {"a", "c"}, "b", true, true, false, {"a", "b", "c"}},
        AddCase{"CapitalsSortBeforeSmallWhenCaseCounts", {"b"}, "B", true, true, false, {"B", "b"}},
        AddCase{
            "NewItemGoesAfterItsEqualsIgnoringCase", {"abc", "ABC"}, "Abc", true, true, true, {"abc", "ABC", "Abc"}},
        // "_" lies between the capitals and the small letters.
        AddCase{"UnderscoreAgainstCase", {"_x"}, "a", true, true, true, {"a", "_x"}},
        AddCase{
            "DuplicateRefusedIgnoringCaseEvenWhenCaseCounts", {"Informe"}, "INFORME", true, false, false, {"Informe"}},
        AddCase{"AccentedCapitalIsTheSameItem", {"ángel ñú"}, "ÁNGEL ÑÚ", false, false, true, {"ángel ñú"}},
        AddCase{"IdenticalItemsBothKept", {"09:00 /a"}, "09:00 /a", true, true, false, {"09:00 /a", "09:00 /a"}}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace vt
