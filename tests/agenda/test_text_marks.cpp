#include "agenda/text_marks.h"

#include <gtest/gtest.h>

#include "agenda/entries.h"
#include "entry_lists.h"

namespace vt {
namespace {

struct TagCase {
    const char* text;
    const char* field10;
    const char* field11;
};

class StartDateTags : public ::testing::TestWithParam<TagCase> {};

TEST_P(StartDateTags, GiveFieldsTenAndEleven) {
    const std::string alarm = BuildAlarmEntry("15/03/2024", "10:00", 1, "M", 7, "0", GetParam().text);
    EXPECT_EQ(GetAlarmField(alarm, 10), GetParam().field10);
    EXPECT_EQ(GetAlarmField(alarm, 11), GetParam().field11);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, StartDateTags,
    ::testing::Values(TagCase{"Revisión <150324>", "15/03/24", "Revisión"},
                      TagCase{"<150324>  Revisión ", "15/03/24", "Revisión"},
                      TagCase{"Pagar <15/3/24>", "", "Pagar <15/3/24>"},
                      TagCase{"Pagar <1503245>", "", "Pagar <1503245>"}, TagCase{"Pagar <15032>", "", "Pagar <15032>"},
                      TagCase{"Pagar <150324", "", "Pagar <150324"}, TagCase{"Pagar >150324<", "", "Pagar >150324<"},
                      TagCase{"x <+15032>", "", "x <+15032>"}, TagCase{"x <ñ15032>", "", "x <ñ15032>"},
                      // Without a tag the text is the whole text, blanks and all.
                      TagCase{"  Pagar  ", "", "  Pagar  "},
                      // Every copy of the tag goes, the blanks inside stay.
                      TagCase{"a <150324> b <150324>", "15/03/24", "a  b"},
                      TagCase{"a <150324> b <160324>", "15/03/24", "a  b <160324>"},
                      // Only the first "<" counts.
                      TagCase{"<x> <150324>", "", "<x> <150324>"}, TagCase{"a < b <150324>", "", "a < b <150324>"},
                      // Six digits that make no date: no start date, but the tag still leaves the text.
                      TagCase{"Pagar <310224>", "", "Pagar"}, TagCase{"Pagar <999999>", "", "Pagar"},
                      // Two-digit years: 00..50 are 2000..2050, 51..99 are 1951..1999, leap years included.
                      TagCase{"x <290200>", "29/02/00", "x"}, TagCase{"x <290251>", "", "x"},
                      TagCase{"x <290252>", "29/02/52", "x"}));

class ActiveOn : public ::testing::Test {
protected:
    static std::string Alarm(const char* text) { return BuildAlarmEntry("01/03/2024", "10:00", 1, "M", 7, "0", text); }
};

TEST_F(ActiveOn, FromTheStartDateOn) {
    const std::string alarm = Alarm("Curso <150324>");
    EXPECT_FALSE(AlarmActiveOn(MakeDate(14, 3, 2024), alarm));
    EXPECT_TRUE(AlarmActiveOn(MakeDate(15, 3, 2024), alarm));
    EXPECT_TRUE(AlarmActiveOn(MakeDate(16, 3, 2024), alarm));
    EXPECT_EQ(AlarmStartDate(alarm), MakeDate(15, 3, 2024));
}

TEST_F(ActiveOn, AlwaysWithoutAStartDate) {
    EXPECT_TRUE(AlarmActiveOn(MakeDate(1, 1, 1900), Alarm("Curso")));
    EXPECT_TRUE(AlarmActiveOn(MakeDate(1, 1, 1900), Alarm("Curso <310224>")));
    EXPECT_TRUE(AlarmActiveOn(MakeDate(1, 1, 1900), "garbled"));
}

TEST_F(ActiveOn, ReadsTwoDigitYearsInTheProgramsWindow) {
    EXPECT_TRUE(AlarmActiveOn(MakeDate(1, 1, 2024), Alarm("x <010151>")));   // 1951
    EXPECT_FALSE(AlarmActiveOn(MakeDate(1, 1, 2024), Alarm("x <010150>")));  // 2050
}

TEST_F(ActiveOn, ByIndexInsideTheListOnly) {
    const EntryList alarms = test::ListOf({Alarm("a"), Alarm("b <150324>")});
    EXPECT_TRUE(AlarmActiveOn(MakeDate(1, 3, 2024), alarms, 1));
    EXPECT_FALSE(AlarmActiveOn(MakeDate(1, 3, 2024), alarms, 2));
    EXPECT_FALSE(AlarmActiveOn(MakeDate(1, 3, 2024), alarms, 0));
    EXPECT_FALSE(AlarmActiveOn(MakeDate(1, 3, 2024), alarms, 3));
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

INSTANTIATE_TEST_SUITE_P(
    Cases, Anniversaries,
    ::testing::Values(AnniversaryCase{"Boda (1998)", 2025, "Boda (27)"},
                      AnniversaryCase{"Boda (2030)", 2025, "Boda (-5)"},
                      AnniversaryCase{"Boda (2025)", 2025, "Boda (0)"}, AnniversaryCase{"(0000)", 2025, "(2025)"},
                      AnniversaryCase{"(1998) y (1998)", 2025, "(27) y (27)"},
                      AnniversaryCase{"(1998) y (2000)", 2025, "(27) y (2000)"},
                      // Only the first "(" is looked at.
                      AnniversaryCase{"Nota (x) Boda (1998)", 2025, "Nota (x) Boda (1998)"},
                      AnniversaryCase{"Boda (199)", 2025, "Boda (199)"},
                      AnniversaryCase{"Boda (19989)", 2025, "Boda (19989)"},
                      AnniversaryCase{"Boda (1998", 2025, "Boda (1998"},
                      AnniversaryCase{"Boda ( 998)", 2025, "Boda ( 998)"}, AnniversaryCase{"Boda (", 2025, "Boda ("},
                      AnniversaryCase{"", 2025, ""}, AnniversaryCase{"Año (1998) ñandú", 2025, "Año (27) ñandú"},
                      // The 16-bit count: at its ends it is shown, past them the text stays.
                      AnniversaryCase{"(0000)", 32767, "(32767)"}, AnniversaryCase{"(0000)", 32768, "(0000)"},
                      AnniversaryCase{"(9999)", -22769, "(-32768)"}, AnniversaryCase{"(9999)", -22770, "(9999)"}));

}  // namespace
}  // namespace vt
