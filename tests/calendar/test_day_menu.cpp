#include "calendar/day_menu.h"

#include <gtest/gtest.h>

#include <vector>

#include "calendar_entries.h"

namespace vt {
namespace {

using test::AlarmOn;
using test::Entries;
using test::RepetitionOn;

class DayMenuTest : public ::testing::Test {
protected:
    const Date day_ = MakeDate(5, 3, 2024);
    const Date other_ = MakeDate(6, 3, 2024);
};

TEST_F(DayMenuTest, ADayWithoutEntriesOffersOnlyTheDate) {
    const EntryList alarms = Entries({AlarmOn(other_, "otro día")});
    const EntryList repetitions = Entries({RepetitionOn(other_, "otro día")});
    const DayMenu menu = BuildDayMenu(day_, alarms, repetitions);
    EXPECT_EQ(menu.date_caption, "05/03/2024");
    EXPECT_TRUE(menu.rows.empty());
    EXPECT_FALSE(menu.separator);
}

TEST_F(DayMenuTest, AlarmsComeBeforeRepetitionsWithTheirListPlaces) {
    const EntryList alarms =
        Entries({AlarmOn(other_, "no"), AlarmOn(day_, "Boda (1998) <010124>", 14, "1"), AlarmOn(day_, "Segunda")});
    const EntryList repetitions = Entries(
        {RepetitionOn(day_, "Dentista", "10:30"), RepetitionOn(other_, "no"), RepetitionOn(day_, "Pan", "08:05")});
    const DayMenu menu = BuildDayMenu(day_, alarms, repetitions);
    // Alarms show their full stored text: the tag and the anniversary year as typed.
    const std::vector<DayMenuRow> expected{{"ALA", 2, "[ALA] Boda (1998) <010124>"},
                                           {"ALA", 3, "[ALA] Segunda"},
                                           {"REP", 1, "[REP] 10:30 Dentista"},
                                           {"REP", 3, "[REP] 08:05 Pan"}};
    EXPECT_EQ(menu.rows, expected);
    EXPECT_TRUE(menu.separator);
}

TEST_F(DayMenuTest, ASingleRepetitionIsEnoughForTheSeparator) {
    const DayMenu menu = BuildDayMenu(day_, EntryList{}, Entries({RepetitionOn(day_, "R")}));
    ASSERT_EQ(menu.rows.size(), 1u);
    EXPECT_TRUE(menu.separator);
}

TEST_F(DayMenuTest, AlarmsKeptOffTheGridAreStillOffered) {
    const DayMenu menu = BuildDayMenu(day_, Entries({AlarmOn(day_, "-Oculta")}), EntryList{});
    const std::vector<DayMenuRow> expected{{"ALA", 1, "[ALA] -Oculta"}};
    EXPECT_EQ(menu.rows, expected);
}

TEST_F(DayMenuTest, EntriesWhoseDateDoesNotReadArePassedOver) {
    const EntryList alarms = Entries({"05/13/2024 09:00 00 D 14 0 mes 13", "", AlarmOn(day_, "buena")});
    const EntryList repetitions = Entries({"5-3-2024 10:00 x", RepetitionOn(day_, "buena")});
    const DayMenu menu = BuildDayMenu(day_, alarms, repetitions);
    const std::vector<DayMenuRow> expected{{"ALA", 3, "[ALA] buena"}, {"REP", 2, "[REP] 10:30 buena"}};
    EXPECT_EQ(menu.rows, expected);
}

TEST_F(DayMenuTest, TheDateItemOfAnyDay) {
    EXPECT_EQ(BuildDayMenu(MakeDate(31, 12, 1999), EntryList{}, EntryList{}).date_caption, "31/12/1999");
    EXPECT_EQ(BuildDayMenu(MakeDate(29, 2, 2024), EntryList{}, EntryList{}).date_caption, "29/02/2024");
}

}  // namespace
}  // namespace vt
