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

// ---- navigation ------------------------------------------------------------------------------

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

}  // namespace
}  // namespace vt
