#include "calendar/month_grid.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "calendar_entries.h"

namespace vt {
namespace {

using test::AlarmOn;
using test::Entries;
using test::RepetitionOn;

// Wednesday 13 March 2024 is today throughout, unless a test says otherwise.
class MonthGridTest : public ::testing::Test {
protected:
    const Date today_ = MakeDate(13, 3, 2024);
    EntryList alarms_;
    EntryList repetitions_;

    MonthGrid Fill(Date displayed) const { return FillMonthGrid(displayed, today_, alarms_, repetitions_); }
    MonthGrid FillToday() const { return Fill(today_); }
    // The cell that shows a date in a grid starting on `start`.
    static std::size_t CellOf(const MonthGrid& grid, Date date) {
        return static_cast<std::size_t>((std::chrono::sys_days{date} - std::chrono::sys_days{grid.start}).count());
    }
};

TEST_F(MonthGridTest, TodaysViewStartsWithTodaysWeek) {
    const MonthGrid grid = FillToday();
    EXPECT_EQ(grid.displayed, today_);
    EXPECT_EQ(grid.start, MakeDate(11, 3, 2024));
    EXPECT_EQ(grid.caption, "MAR - 2024");
    for (std::size_t i = 0; i < grid.cells.size(); ++i) {
        const DayCell& cell = grid.cells[i];
        EXPECT_EQ(cell.date, AddDays(grid.start, static_cast<int>(i))) << "cell " << i;
        const CellColour expected = i == 2 ? CellColour::Today : i <= 20 ? CellColour::Window : CellColour::OtherMonth;
        EXPECT_EQ(cell.colour, expected) << "cell " << i;
        EXPECT_FALSE(cell.bold);
        EXPECT_FALSE(cell.underline);
        EXPECT_EQ(cell.tag, "");
    }
    EXPECT_EQ(grid.cells[0].caption, "11");
    EXPECT_EQ(grid.cells[20].caption, "31");
    EXPECT_EQ(grid.cells[21].caption, "01");
    EXPECT_EQ(grid.cells[41].caption, "21");
    EXPECT_EQ(grid.cells[41].date, MakeDate(21, 4, 2024));
}

TEST_F(MonthGridTest, NextMonthFromTodayStartsOnItsFirst) {
    const MonthGrid grid = Fill(MoveDisplayedDate(today_, today_, 2));
    EXPECT_EQ(grid.displayed, MakeDate(1, 4, 2024));
    EXPECT_EQ(grid.start, MakeDate(1, 4, 2024));  // a Monday: no week before it
    EXPECT_EQ(grid.caption, "ABR - 2024");
    for (std::size_t i = 0; i < grid.cells.size(); ++i) {
        EXPECT_EQ(grid.cells[i].colour, i < 30 ? CellColour::Window : CellColour::OtherMonth) << "cell " << i;
    }
    EXPECT_EQ(grid.cells[30].date, MakeDate(1, 5, 2024));
}

TEST_F(MonthGridTest, MinusOnTodaysViewShowsTheWholeMonth) {
    const MonthGrid grid = Fill(MoveDisplayedDate(today_, today_, 1));
    EXPECT_EQ(grid.displayed, MakeDate(1, 3, 2024));
    EXPECT_EQ(grid.start, MakeDate(26, 2, 2024));
    EXPECT_EQ(grid.cells[0].colour, CellColour::OtherMonth);
    EXPECT_EQ(grid.cells[3].colour, CellColour::OtherMonth);  // 29 February
    EXPECT_EQ(grid.cells[4].colour, CellColour::Window);      // 1 March
    EXPECT_EQ(grid.cells[16].date, today_);
    EXPECT_EQ(grid.cells[16].colour, CellColour::Today);
    EXPECT_EQ(grid.cells[35].colour, CellColour::OtherMonth);  // 1 April
}

TEST_F(MonthGridTest, MinusWhenTodayIsTheFirstGoesToThePreviousMonth) {
    const Date first = MakeDate(1, 3, 2024);
    const Date moved = MoveDisplayedDate(first, first, 1);
    const MonthGrid grid = FillMonthGrid(moved, first, alarms_, repetitions_);
    EXPECT_EQ(grid.displayed, MakeDate(1, 2, 2024));
    EXPECT_EQ(grid.start, MakeDate(29, 1, 2024));
    EXPECT_EQ(grid.caption, "FEB - 2024");
    EXPECT_EQ(grid.cells[CellOf(grid, first)].colour, CellColour::Today);  // today is shown even on another month
}

TEST_F(MonthGridTest, AnyOtherDayIsNormalisedToTheFirst) {
    const MonthGrid grid = Fill(MakeDate(20, 9, 2024));
    EXPECT_EQ(grid.displayed, MakeDate(1, 9, 2024));
    EXPECT_EQ(grid.start, MakeDate(26, 8, 2024));  // 1 September 2024 is a Sunday
    EXPECT_EQ(grid.caption, "SEP - 2024");
    EXPECT_EQ(grid.cells[6].colour, CellColour::Window);
    EXPECT_EQ(grid.cells[5].colour, CellColour::OtherMonth);
}

TEST_F(MonthGridTest, AcrossTheYearEnd) {
    const Date new_years_eve = MakeDate(30, 12, 2024);  // a Monday
    const MonthGrid grid = FillMonthGrid(new_years_eve, new_years_eve, alarms_, repetitions_);
    EXPECT_EQ(grid.start, new_years_eve);
    EXPECT_EQ(grid.caption, "DIC - 2024");
    EXPECT_EQ(grid.cells[0].colour, CellColour::Today);
    EXPECT_EQ(grid.cells[1].colour, CellColour::Window);
    EXPECT_EQ(grid.cells[2].date, MakeDate(1, 1, 2025));
    EXPECT_EQ(grid.cells[2].colour, CellColour::OtherMonth);
}

TEST_F(MonthGridTest, RepetitionsUnderlineAlarmsBoldAndTheTagListsRepetitionsFirst) {
    const Date day = MakeDate(20, 3, 2024);
    alarms_ = Entries({AlarmOn(day, "A")});
    repetitions_ = Entries({RepetitionOn(day, "R")});
    const MonthGrid grid = FillToday();
    const DayCell& cell = grid.cells[9];
    ASSERT_EQ(cell.date, day);
    EXPECT_TRUE(cell.bold);
    EXPECT_TRUE(cell.underline);
    EXPECT_EQ(cell.tag, "R // A // ");
}

TEST_F(MonthGridTest, SeveralEntriesKeepTheirListOrder) {
    const Date day = MakeDate(20, 3, 2024);
    const Date other = MakeDate(21, 3, 2024);
    alarms_ = Entries({AlarmOn(day, "A1"), AlarmOn(other, "X"), AlarmOn(day, "A2")});
    repetitions_ = Entries({RepetitionOn(day, "R1", "18:00"), RepetitionOn(day, "R2", "08:00")});
    const MonthGrid grid = FillToday();
    EXPECT_EQ(grid.cells[9].tag, "R1 // R2 // A1 // A2 // ");
    EXPECT_EQ(grid.cells[10].tag, "X // ");
    EXPECT_TRUE(grid.cells[10].bold);
    EXPECT_FALSE(grid.cells[10].underline);
}

TEST_F(MonthGridTest, OnlyRepetitionsGiveNoBold) {
    repetitions_ = Entries({RepetitionOn(MakeDate(14, 3, 2024), "R")});
    const MonthGrid grid = FillToday();
    const DayCell& cell = grid.cells[3];
    EXPECT_TRUE(cell.underline);
    EXPECT_FALSE(cell.bold);
    EXPECT_EQ(cell.tag, "R // ");
}

TEST_F(MonthGridTest, AlarmTagsDropTheStartDateAndCountYearsForTheCellsYear) {
    // The view is December 2024; the first alarm's cell lies in January 2025.
    alarms_ = Entries({AlarmOn(MakeDate(3, 1, 2025), "Boda (1998) <010124>"),
                       AlarmOn(MakeDate(20, 12, 2024), "Boda (1998) y (1998)")});
    const MonthGrid grid = Fill(MakeDate(5, 12, 2024));
    ASSERT_EQ(grid.cells[41].date, MakeDate(5, 1, 2025));
    EXPECT_EQ(grid.cells[CellOf(grid, MakeDate(3, 1, 2025))].tag, "Boda (27) // ");
    EXPECT_EQ(grid.cells[CellOf(grid, MakeDate(20, 12, 2024))].tag, "Boda (26) y (26) // ");
}

TEST_F(MonthGridTest, PriorityGreenOverridesTodayAndOtherMonth) {
    alarms_ = Entries({AlarmOn(today_, "P", 14, "1"), AlarmOn(MakeDate(2, 4, 2024), "Q", 14, "1"),
                       AlarmOn(MakeDate(20, 3, 2024), "N", 14, "0"), AlarmOn(MakeDate(21, 3, 2024), "E", 14, "2")});
    const MonthGrid grid = FillToday();
    EXPECT_EQ(grid.cells[2].colour, CellColour::Priority);
    EXPECT_EQ(grid.cells[22].colour, CellColour::Priority);  // 2 April
    EXPECT_EQ(grid.cells[9].colour, CellColour::Window);     // an ordinary alarm leaves the colour alone
    EXPECT_TRUE(grid.cells[9].bold);
    EXPECT_EQ(grid.cells[10].colour, CellColour::Window);  // only "1" is high priority, not any other flag
}

TEST_F(MonthGridTest, ANormalAlarmTodayStaysYellow) {
    alarms_ = Entries({AlarmOn(today_, "N")});
    EXPECT_EQ(FillToday().cells[2].colour, CellColour::Today);
}

TEST_F(MonthGridTest, AlarmsMarkedWithAMinusStayOffTheGrid) {
    const Date day = MakeDate(20, 3, 2024);
    alarms_ = Entries({AlarmOn(day, "-Secreta", 14, "1"), AlarmOn(MakeDate(21, 3, 2024), "Visible -no"),
                       AlarmOn(MakeDate(22, 3, 2024), " -con blanco")});
    repetitions_ = Entries({RepetitionOn(MakeDate(23, 3, 2024), "-Recordatorio")});
    const MonthGrid grid = FillToday();
    EXPECT_FALSE(grid.cells[9].bold);
    EXPECT_EQ(grid.cells[9].tag, "");
    EXPECT_EQ(grid.cells[9].colour, CellColour::Window);  // not even its priority shows
    EXPECT_EQ(grid.cells[10].tag, "Visible -no // ");
    // Only a "-" in first place is the mark.
    EXPECT_EQ(grid.cells[11].tag, " -con blanco // ");
    // The mark belongs to alarms; a repetition's text is shown whatever it begins with.
    EXPECT_EQ(grid.cells[12].tag, "-Recordatorio // ");
    EXPECT_TRUE(grid.cells[12].underline);
}

TEST_F(MonthGridTest, OnlyTheStoredDateIsMarked) {
    // A monthly alarm on today: 13 April is on the grid too but is not marked.
    alarms_ = Entries({BuildAlarmEntry("13/03/2024", "09:00", 1, "M", 7, "0", "Mensual")});
    const MonthGrid grid = FillToday();
    EXPECT_TRUE(grid.cells[2].bold);
    EXPECT_FALSE(grid.cells[CellOf(grid, MakeDate(13, 4, 2024))].bold);
}

TEST_F(MonthGridTest, FirstAndLastCellsAreMarkedAndTheDaysAroundThemAreNot) {
    alarms_ = Entries({AlarmOn(MakeDate(10, 3, 2024), "antes"), AlarmOn(MakeDate(11, 3, 2024), "primera"),
                       AlarmOn(MakeDate(21, 4, 2024), "ultima"), AlarmOn(MakeDate(22, 4, 2024), "despues")});
    repetitions_ =
        Entries({RepetitionOn(MakeDate(10, 3, 2024), "r antes"), RepetitionOn(MakeDate(22, 4, 2024), "r despues")});
    const MonthGrid grid = FillToday();
    EXPECT_EQ(grid.cells[0].tag, "primera // ");
    EXPECT_EQ(grid.cells[41].tag, "ultima // ");
    int marked = 0;
    for (const DayCell& cell : grid.cells) {
        marked += (cell.bold || cell.underline || !cell.tag.empty()) ? 1 : 0;
    }
    EXPECT_EQ(marked, 2);
}

TEST_F(MonthGridTest, TheSameDayInAnotherYearIsNotMarked) {
    alarms_ = Entries({AlarmOn(MakeDate(20, 3, 2023), "otro año")});
    repetitions_ = Entries({RepetitionOn(MakeDate(20, 3, 2025), "otro año")});
    EXPECT_EQ(FillToday().cells[9].tag, "");
}

TEST_F(MonthGridTest, EntriesWhoseDateDoesNotReadArePassedOver) {
    const Date day = MakeDate(20, 3, 2024);
    alarms_ = Entries({"31/02/2024 09:00 00 D 14 0 Imposible", "basura", "", AlarmOn(day, "buena")});
    repetitions_ = Entries({"20-03-2024 10:00 guiones", "20/03/24   10:00 corta", "x", RepetitionOn(day, "buena")});
    const MonthGrid grid = FillToday();
    EXPECT_EQ(grid.cells[9].tag, "buena // buena // ");
    int marked = 0;
    for (const DayCell& cell : grid.cells) {
        marked += (cell.bold || cell.underline) ? 1 : 0;
    }
    EXPECT_EQ(marked, 1);
}

TEST_F(MonthGridTest, AccentedTextsAreCarriedWhole) {
    alarms_ = Entries({AlarmOn(MakeDate(20, 3, 2024), "Reunión, año (2000)")});
    EXPECT_EQ(FillToday().cells[9].tag, "Reunión; año (24) // ");
}

TEST(CellColours, FixedColoursAndTheWindowsOwn) {
    EXPECT_EQ(FixedCellRgb(CellColour::OtherMonth), (Rgb{204, 204, 204}));
    EXPECT_EQ(FixedCellRgb(CellColour::Today), (Rgb{255, 255, 192}));
    EXPECT_EQ(FixedCellRgb(CellColour::Priority), (Rgb{192, 255, 192}));
    EXPECT_EQ(FixedCellRgb(CellColour::Window), std::nullopt);
}

}  // namespace
}  // namespace vt

namespace vt {
namespace {

TEST(MonthGridStartDate, AnAlarmIsNotShownOnADayBeforeItsStartDate) {
    const Date today = MakeDate(13, 3, 2024);
    const EntryList alarms = test::Entries({test::AlarmOn(MakeDate(14, 3, 2024), "Curso <200324>"),
                                            test::AlarmOn(MakeDate(21, 3, 2024), "Curso <200324>")});
    const MonthGrid grid = FillMonthGrid(today, today, alarms, EntryList{});
    // Cell 0 is Monday 11 March.
    EXPECT_FALSE(grid.cells[3].bold) << "14 March comes before the start date";
    EXPECT_EQ(grid.cells[3].tag, "");
    EXPECT_TRUE(grid.cells[10].bold);
    EXPECT_EQ(grid.cells[10].tag, "Curso // ");
}

}  // namespace
}  // namespace vt
