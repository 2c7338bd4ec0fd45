#include "calendar/month_grid.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <tuple>

#include "calendar/day_menu.h"
#include "calendar/month_names.h"
#include "calendar_entries.h"

namespace vt {
namespace {

using test::AlarmOn;
using test::ListOf;
using test::RepetitionOn;

Date March(int day) {
    return MakeDate(day, 3, 2024);
}

// Wednesday 13 March 2024 is today throughout, unless a test says otherwise; its grid starts on
// Monday 11 March, so cell i shows 11 + i March.
class MonthGridTest : public ::testing::Test {
protected:
    const Date today_ = March(13);
    EntryList alarms_;
    EntryList repetitions_;

    MonthGrid Fill(Date displayed) const { return FillMonthGrid(displayed, today_, alarms_, repetitions_); }
    MonthGrid FillToday() const { return Fill(today_); }
    static const DayCell& CellOf(const MonthGrid& grid, Date date) {
        const auto days = (std::chrono::sys_days{date} - std::chrono::sys_days{grid.start}).count();
        return grid.cells.at(static_cast<std::size_t>(days));
    }
};

// Six weeks of consecutive days from the start: the displayed month's days in the window's own
// colour, the others grey, and today yellow wherever it lies. "+" from today's view goes to
// April, shown from its 1st, a Monday with no week before it; "-" when today is the 1st shows
// the month before.
TEST(GridShape, CoversSixWeeksFromTheStart) {
    const struct {
        const char* name;
        Date today;
        Date shown;  // the date handed to the grid
        Date displayed;
        Date start;
        const char* caption;
        int first_cell;  // the cell of the month's 1st, negative when it lies before the grid
        int month_days;
        int today_cell;  // -1: today is not on the grid
    } cases[] = {
        {"TodaysView", March(13), March(13), March(13), March(11), "MAR - 2024", -10, 31, 2},
        {"PlusFromToday", March(13), MoveDisplayedDate(March(13), March(13), 2), MakeDate(1, 4, 2024),
         MakeDate(1, 4, 2024), "ABR - 2024", 0, 30, -1},
        {"MinusWhenTodayIsTheFirst", March(1), MoveDisplayedDate(March(1), March(1), 1), MakeDate(1, 2, 2024),
         MakeDate(29, 1, 2024), "FEB - 2024", 3, 29, 32},
        // "-" on today's view shows the whole month, from its 1st.
        {"MinusFromToday", March(13), MoveDisplayedDate(March(13), March(13), 1), March(1), MakeDate(26, 2, 2024),
         "MAR - 2024", 4, 31, 16},
        // A month whose 1st is a Sunday starts six days earlier.
        {"FirstOnASunday", March(13), MakeDate(20, 9, 2024), MakeDate(1, 9, 2024), MakeDate(26, 8, 2024), "SEP - 2024",
         6, 30, -1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const MonthGrid grid = FillMonthGrid(c.shown, c.today, EntryList{}, EntryList{});
        EXPECT_EQ(grid.displayed, c.displayed);
        EXPECT_EQ(grid.start, c.start);
        EXPECT_EQ(grid.caption, c.caption);
        for (int i = 0; i < 42; ++i) {
            const DayCell& cell = grid.cells[static_cast<std::size_t>(i)];
            EXPECT_EQ(cell.date, AddDays(c.start, i)) << "cell " << i;
            EXPECT_EQ(cell.caption, FormatDate(cell.date).substr(0, 2)) << "cell " << i;
            const bool in_month = i >= c.first_cell && i < c.first_cell + c.month_days;
            EXPECT_EQ(cell.colour, i == c.today_cell ? CellColour::Today
                                   : in_month        ? CellColour::Window
                                                     : CellColour::OtherMonth)
                << "cell " << i;
            EXPECT_FALSE(cell.bold || cell.underline || !cell.tag.empty()) << "cell " << i;
        }
    }
}

TEST_F(MonthGridTest, RepetitionsUnderlineAlarmsBoldAndTheTagListsRepetitionsFirst) {
    alarms_ = ListOf({AlarmOn(March(20), "A1"), BuildAlarmEntry("21/03/2024", "09:00", 1, "M", 7, "0", "X"),
                      AlarmOn(March(20), "A2"), AlarmOn(March(22), "Reunión, año (2000)")});
    repetitions_ = ListOf(
        {RepetitionOn(March(20), "R1", "18:00"), RepetitionOn(March(20), "R2", "08:00"), RepetitionOn(March(14), "R")});
    const MonthGrid grid = FillToday();
    EXPECT_EQ(grid.cells[9].tag, "R1 // R2 // A1 // A2 // ");
    EXPECT_TRUE(grid.cells[9].bold);
    EXPECT_TRUE(grid.cells[9].underline);
    EXPECT_EQ(grid.cells[11].tag, "Reunión; año (24) // ");
    EXPECT_FALSE(grid.cells[3].bold);
    // Only the stored date is marked: 21 April, on the grid too, is not the monthly alarm's.
    EXPECT_FALSE(grid.cells[41].bold);
}

TEST_F(MonthGridTest, AlarmTagsDropTheStartDateAndCountYearsForTheCellsYear) {
    // The view is December 2024; the first alarm's cell lies in January 2025. An alarm is not
    // shown on a day before its start date.
    alarms_ = ListOf(
        {AlarmOn(MakeDate(3, 1, 2025), "Boda (1998) <010124>"), AlarmOn(MakeDate(20, 12, 2024), "Boda (1998) y (1998)"),
         AlarmOn(MakeDate(21, 12, 2024), "Curso <221224>"), AlarmOn(MakeDate(23, 12, 2024), "Curso <221224>")});
    const MonthGrid grid = Fill(MakeDate(5, 12, 2024));
    EXPECT_EQ(CellOf(grid, MakeDate(3, 1, 2025)).tag, "Boda (27) // ");
    EXPECT_EQ(CellOf(grid, MakeDate(20, 12, 2024)).tag, "Boda (26) y (26) // ");  // every copy counted
    EXPECT_EQ(CellOf(grid, MakeDate(21, 12, 2024)).tag, "");
    EXPECT_EQ(CellOf(grid, MakeDate(23, 12, 2024)).tag, "Curso // ");
}

TEST_F(MonthGridTest, OnlyPriorityOneTurnsACellGreenOverTodayAndOtherMonth) {
    alarms_ = ListOf({AlarmOn(today_, "P", 14, "1"), AlarmOn(March(21), "E", 14, "2")});
    EXPECT_EQ(FillToday().cells[2].colour, CellColour::Priority);
    EXPECT_EQ(FillToday().cells[10].colour, CellColour::Window);
    alarms_ = ListOf({AlarmOn(today_, "N")});
    EXPECT_EQ(FillToday().cells[2].colour, CellColour::Today);  // an ordinary alarm today stays yellow
}

TEST_F(MonthGridTest, AlarmsMarkedWithAMinusStayOffTheGrid) {
    alarms_ = ListOf({AlarmOn(March(20), "-Secreta", 14, "1"), AlarmOn(March(22), " -con blanco")});
    repetitions_ = ListOf({RepetitionOn(March(23), "-Recordatorio")});
    const MonthGrid grid = FillToday();
    EXPECT_FALSE(grid.cells[9].bold);
    EXPECT_EQ(grid.cells[9].colour, CellColour::Window);  // not even its priority shows
    EXPECT_EQ(grid.cells[11].tag, " -con blanco // ");    // only a "-" in first place is the mark
    // The mark belongs to alarms; a repetition's text is shown whatever it begins with.
    EXPECT_EQ(grid.cells[12].tag, "-Recordatorio // ");
}

// ---- navigation ------------------------------------------------------------------------------

// Buttons: 0 "<<", 1 "-", 2 "+", 3 ">>", 4 today.
TEST(MoveDisplayed, GivesTheNextDisplayedDate) {
    const Date today = March(13);
    for (const auto& [what, displayed, on, button, expected] :
         std::vector<std::tuple<const char*, Date, Date, int, Date>>{
             {"+ from 31 March", March(31), today, 2, MakeDate(30, 4, 2024)},
             {"- on today's view at the month's end", March(31), March(31), 1, March(1)},
             {"- on a 1st that is not today", March(1), today, 1, MakeDate(1, 2, 2024)},
             {"- on a day that is not today clamps", March(31), today, 1, MakeDate(29, 2, 2024)},
             {"centre button", MakeDate(1, 7, 2031), today, 4, today},
             {"unknown button", MakeDate(1, 7, 2031), today, 5, MakeDate(1, 7, 2031)},
             {"<< from 29 February", MakeDate(29, 2, 2024), today, 0, MakeDate(28, 2, 2023)},
             {">> into a leap year stays on the 28th", MakeDate(28, 2, 2023), today, 3, MakeDate(28, 2, 2024)},
             {"+ from 31 January, leap year", MakeDate(31, 1, 2024), today, 2, MakeDate(29, 2, 2024)},
             {"+ across the year", MakeDate(1, 12, 2024), today, 2, MakeDate(1, 1, 2025)},
             {"- across the year", MakeDate(1, 1, 2025), today, 1, MakeDate(1, 12, 2024)},
             {"<< stops at year 1", MakeDate(1, 6, 1), today, 0, MakeDate(1, 6, 1)},
             {"+ stops at year 9999", MakeDate(1, 12, 9999), today, 2, MakeDate(1, 12, 9999)},
         }) {
        EXPECT_EQ(MoveDisplayedDate(displayed, on, button), expected) << what;
    }
}

TEST(MonthNames, BothLanguagesFullAndShort) {
    std::string names[4];
    for (int month = 1; month <= 12; ++month) {
        const Date date = MakeDate(15, month, 2024);
        names[0] += MonthName(date, false, "C") + " ";
        names[1] += MonthName(month, true, "C") + " ";
        names[2] += MonthName(date, false, "E") + " ";
        names[3] += MonthName(month, true, "E") + " ";
    }
    EXPECT_EQ(names[0], "ENERO FEBRERO MARZO ABRIL MAYO JUNIO JULIO AGOSTO SEPTIEMBRE OCTUBRE NOVIEMBRE DICIEMBRE ");
    EXPECT_EQ(names[1], "ENE FEB MAR ABR MAY JUN JUL AGO SEP OCT NOV DIC ");
    EXPECT_EQ(names[2],
              "URTARRILA OTSAILA MARTXOA APIRILA MAIATZA EKAINA UZTAILA ABUZTUA IRAILA URRIA AZAROA ABENDUA ");
    EXPECT_EQ(names[3], "URT OTS MAR API MAI EKA UZT ABU IRA URR AZA ABE ");
    // Only a capital "E" is Basque, and there is no thirteenth month.
    for (const char* other : {"", "e", "EU", "S"}) {
        EXPECT_EQ(MonthName(MakeDate(1, 5, 2024), false, other), "MAYO") << "language \"" << other << "\"";
    }
    EXPECT_EQ(MonthName(0, false, "C"), "");
    EXPECT_EQ(MonthName(13, true, "E"), "");
}

// ---- the day menu ----------------------------------------------------------------------------

TEST(DayMenu, AlarmsComeBeforeRepetitionsWithTheirListPlaces) {
    const Date day = MakeDate(5, 3, 2024);
    const Date other = MakeDate(6, 3, 2024);
    // Hidden "-" alarms are offered too, and entries whose date does not read are passed over.
    const EntryList alarms = ListOf({AlarmOn(other, "no"), AlarmOn(day, "Boda (1998) <010124>", 14, "1"),
                                     "05/13/2024 09:00 00 D 14 0 mes 13", AlarmOn(day, "-Oculta")});
    const EntryList repetitions =
        ListOf({RepetitionOn(day, "Dentista", "10:30"), "5-3-2024 10:00 x", RepetitionOn(day, "Pan", "08:05")});
    const DayMenu menu = BuildDayMenu(day, alarms, repetitions);
    EXPECT_EQ(menu.date_caption, "05/03/2024");
    // Alarms show their full stored text: the tag and the anniversary year as typed.
    const std::vector<DayMenuRow> expected{{"ALA", 2, "[ALA] Boda (1998) <010124>"},
                                           {"ALA", 4, "[ALA] -Oculta"},
                                           {"REP", 1, "[REP] 10:30 Dentista"},
                                           {"REP", 3, "[REP] 08:05 Pan"}};
    EXPECT_EQ(menu.rows, expected);
    EXPECT_TRUE(menu.separator);
    // A day without entries offers only its date.
    const DayMenu empty = BuildDayMenu(other, ListOf({AlarmOn(day, "x")}), repetitions);
    EXPECT_TRUE(empty.rows.empty());
    EXPECT_FALSE(empty.separator);
}

}  // namespace
}  // namespace vt
