#include "agenda/text_marks.h"

#include <gtest/gtest.h>

#include <tuple>

#include "agenda/entries.h"
#include "entry_lists.h"

namespace vt {
namespace {

std::string Alarm(const std::string& text) {
    return BuildAlarmEntry("01/03/2024", "10:00", 1, "M", 7, "0", text);
}

// Every copy of the tag goes; six digits that make no date give no start date but still leave
// the text; two-digit years 00..50 are 2000..2050, 51..99 1951..1999.
TEST(StartDateTags, GiveFieldsTenAndEleven) {
    for (const auto& [text, field10, field11] : std::vector<std::tuple<const char*, const char*, const char*>>{
             {"Revisión <150324>", "15/03/24", "Revisión"},
             {"Pagar <15/3/24>", "", "Pagar <15/3/24>"},
             {"Pagar <1503245>", "", "Pagar <1503245>"},
             {"a <150324> b <150324>", "15/03/24", "a  b"},
             {"Pagar <310224>", "", "Pagar"},
             {"x <290200>", "29/02/00", "x"},
             {"x <290252>", "29/02/52", "x"},
         }) {
        SCOPED_TRACE(text);
        EXPECT_EQ(GetAlarmField(Alarm(text), 10), field10);
        EXPECT_EQ(GetAlarmField(Alarm(text), 11), field11);
    }
}

TEST(ActiveOn, FromTheStartDateOnAndAlwaysWithoutOne) {
    const std::string alarm = Alarm("Curso <150324>");
    EXPECT_FALSE(AlarmActiveOn(MakeDate(14, 3, 2024), alarm));
    EXPECT_TRUE(AlarmActiveOn(MakeDate(15, 3, 2024), alarm));
    for (const std::string& other : {Alarm("Curso"), Alarm("Curso <310224>"), std::string("garbled")}) {
        EXPECT_TRUE(AlarmActiveOn(MakeDate(1, 1, 1900), other)) << other;
    }
}

// Only the first "(" is looked at.
TEST(Anniversaries, ShowTheYearsElapsed) {
    for (const auto& [text, year, shown] : std::vector<std::tuple<const char*, int, const char*>>{
             {"Boda (1998)", 2025, "Boda (27)"},
             {"Boda (2030)", 2025, "Boda (-5)"},
             {"(1998) y (2000)", 2025, "(27) y (2000)"},
             {"Nota (x) Boda (1998)", 2025, "Nota (x) Boda (1998)"},
         }) {
        EXPECT_EQ(AnniversaryText(text, year), shown) << text;
    }
}

}  // namespace
}  // namespace vt
