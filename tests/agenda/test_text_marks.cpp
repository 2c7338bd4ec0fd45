#include "agenda/text_marks.h"

#include <gtest/gtest.h>

#include "agenda/entries.h"
#include "entry_lists.h"

namespace vt {
namespace {

std::string Alarm(const std::string& text) {
    return BuildAlarmEntry("01/03/2024", "10:00", 1, "M", 7, "0", text);
}

struct TagCase {
    const char* text;
    const char* field10;
    const char* field11;
};

class StartDateTags : public ::testing::TestWithParam<TagCase> {};

TEST_P(StartDateTags, GiveFieldsTenAndEleven) {
    EXPECT_EQ(GetAlarmField(Alarm(GetParam().text), 10), GetParam().field10);
    EXPECT_EQ(GetAlarmField(Alarm(GetParam().text), 11), GetParam().field11);
}

// Every copy of the tag goes; six digits that make no date give no start date but still leave
// the text; two-digit years 00..50 are 2000..2050, 51..99 1951..1999.
INSTANTIATE_TEST_SUITE_P(Cases, StartDateTags,
                         ::testing::Values(TagCase{"Revisión <150324>", "15/03/24", "Revisión"},

                                           TagCase{"Pagar <15/3/24>", "", "Pagar <15/3/24>"},
                                           TagCase{"Pagar <1503245>", "", "Pagar <1503245>"},

                                           TagCase{"a <150324> b <150324>", "15/03/24", "a  b"},

                                           TagCase{"Pagar <310224>", "", "Pagar"},
                                           TagCase{"x <290200>", "29/02/00", "x"},
                                           TagCase{"x <290252>", "29/02/52", "x"}));

TEST(ActiveOn, FromTheStartDateOnAndAlwaysWithoutOne) {
    const std::string alarm = Alarm("Curso <150324>");
    EXPECT_FALSE(AlarmActiveOn(MakeDate(14, 3, 2024), alarm));
    EXPECT_TRUE(AlarmActiveOn(MakeDate(15, 3, 2024), alarm));
    for (const std::string& other : {Alarm("Curso"), Alarm("Curso <310224>"), std::string("garbled")}) {
        EXPECT_TRUE(AlarmActiveOn(MakeDate(1, 1, 1900), other)) << other;
    }
}

struct AnniversaryCase {
    const char* text;
    int year;
    const char* shown;
};

class Anniversaries : public ::testing::TestWithParam<AnniversaryCase> {};

TEST_P(Anniversaries, ShowTheYearsElapsed) {
    EXPECT_EQ(AnniversaryText(GetParam().text, GetParam().year), GetParam().shown);
}

// Only the first "(" is looked at.
INSTANTIATE_TEST_SUITE_P(Cases, Anniversaries,
                         ::testing::Values(AnniversaryCase{"Boda (1998)", 2025, "Boda (27)"},
                                           AnniversaryCase{"Boda (2030)", 2025, "Boda (-5)"},

                                           AnniversaryCase{"(1998) y (2000)", 2025, "(27) y (2000)"},
                                           AnniversaryCase{"Nota (x) Boda (1998)", 2025, "Nota (x) Boda (1998)"}));

}  // namespace
}  // namespace vt
