#pragma once
// The month calendar of the main window as plain data: which 42 days it shows, how each day
// button looks and what its tag holds. The window only paints this and forwards clicks.

#include <array>
#include <optional>
#include <string>

#include "store/dates.h"
#include "store/entry_list.h"

namespace vt {

inline constexpr int kGridCells = 42;  // six weeks of seven days, Monday first

// The background of a day button. Window is the desktop's own window colour, which only the
// window knows; the other three are fixed.
enum class CellColour { OtherMonth, Window, Today, Priority };

struct Rgb {
    int red = 0;
    int green = 0;
    int blue = 0;
    friend bool operator==(const Rgb&, const Rgb&) = default;
};

// The fixed colour of a background; nothing for Window.
std::optional<Rgb> FixedCellRgb(CellColour colour);

struct DayCell {
    std::string caption;     // day of the month, "01".."31"
    bool bold = false;       // the day has an alarm
    bool underline = false;  // the day has a repetition
    CellColour colour = CellColour::Window;
    // The texts of the day's entries, each followed by " // ": repetitions first, then alarms.
    std::string tag;
    Date date;
};

struct MonthGrid {
    Date displayed;       // the displayed date after filling: any other day than today becomes the 1st
    Date start;           // the day in cell 0, always a Monday
    std::string caption;  // the centre button, "MAR - 2024"
    std::array<DayCell, kGridCells> cells;
};

// Lays out the grid for the displayed date. The view of today starts with the week that holds
// today, so that the current and the coming weeks stay in sight; any other view starts with
// the week of the 1st of its month. A day outside the displayed month is grey (only the month
// number is compared); today is light yellow; a priority alarm makes its day light green over
// both. Each entry marks only the date its record holds: a recurring alarm is not projected
// onto its later dates, since the stored date is always its next pending one.
//
// An alarm whose text begins with "-" is left out of the grid altogether (no bold, no tag, no
// green): that mark is how the user keeps an entry off the calendar. Entries whose date does
// not read are passed over; they are reported when the settings are loaded.
MonthGrid FillMonthGrid(Date displayed, Date today, const EntryList& alarms, const EntryList& repetitions);

// The five navigation buttons, by index:
//  0 "<<" one year back, 3 ">>" one year forward (29 February becomes 28 February);
//  1 "-"  from the view of today (when today is not the 1st) the 1st of the current month, so
//         that the first press shows the whole month; otherwise one month back;
//  2 "+"  one month forward (the 31st becomes the last day of a shorter month);
//  4      the centre button: back to today.
// An unknown index, or a step that would leave the years 1..9999 that a date can be written
// in, leaves the displayed date as it is.
Date MoveDisplayedDate(Date displayed, Date today, int button);

}  // namespace vt
