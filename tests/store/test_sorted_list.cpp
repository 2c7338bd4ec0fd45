#include "store/sorted_list.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <tuple>
#include <vector>

namespace vt {
namespace {

using Items = std::vector<std::string>;

// The items before are added one by one with the same switches; the list after is without slot 0.
TEST(AgregarAListaRules, PlacesOrRefusesTheItem) {
    // clang-format off
    //    name, before, item, sorted, duplicates, ignore_case, after
    const std::vector<std::tuple<const char*, Items, const char*, bool, bool, bool, Items>> cases{
        {"UnsortedAppends", {"b", "a"}, "0", false, true, false, {"b", "a", "0"}},
        {"SortedGoesBeforeFirstGreater", {"a", "c"}, "b", true, true, false, {"a", "b", "c"}},
        {"SmallestGoesFirst", {"b", "c"}, "a", true, true, false, {"a", "b", "c"}},
        {"GreatestGoesLast", {"a", "b"}, "c", true, true, false, {"a", "b", "c"}},
        {"CapitalsSortBeforeSmallWhenCaseCounts", {"b"}, "B", true, true, false, {"B", "b"}},
        {"NewItemGoesAfterItsEqualsIgnoringCase", {"abc", "ABC"}, "Abc", true, true, true, {"abc", "ABC", "Abc"}},
        {"IgnoringCaseSortsAsUpperCase", {"b", "A"}, "a", true, true, true, {"A", "a", "b"}},
        // "_" lies between the capitals and the small letters: the case switch changes the place.
        {"UnderscoreAgainstCase", {"_x"}, "a", true, true, true, {"a", "_x"}},
        {"UnderscoreWithCase", {"_x"}, "a", true, true, false, {"_x", "a"}},
        {"UnderscoreAgainstCapital", {"_x"}, "A", true, true, false, {"A", "_x"}},
        {"DuplicateRefusedIgnoringCaseEvenWhenCaseCounts", {"Informe"}, "INFORME", true, false, false, {"Informe"}},
        {"DuplicateRefusedInUnsortedList", {"x", "Informe"}, "informe", false, false, false, {"x", "Informe"}},
        {"AccentedCapitalIsTheSameItem", {"ángel ñú"}, "ÁNGEL ÑÚ", false, false, true, {"ángel ñú"}},
        {"DifferentItemAddedWithoutDuplicates", {"a"}, "b", true, false, false, {"a", "b"}},
        {"IdenticalItemsBothKept", {"09:00 /a"}, "09:00 /a", true, true, false, {"09:00 /a", "09:00 /a"}}};
    // clang-format on
    for (const auto& [name, before, item, sorted, duplicates, ignore_case, after] : cases) {
        SCOPED_TRACE(name);
        std::vector<std::string> list(1);
        for (const auto& earlier : before) {
            AgregarALista(list, earlier, sorted, duplicates, ignore_case);
        }
        AgregarALista(list, item, sorted, duplicates, ignore_case);
        ASSERT_FALSE(list.empty());
        EXPECT_EQ(list[0], "") << "slot 0 is never used";
        EXPECT_EQ(Items(list.begin() + 1, list.end()), after);
    }
}

}  // namespace
}  // namespace vt
