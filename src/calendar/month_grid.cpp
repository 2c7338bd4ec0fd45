#include "calendar/month_grid.h"

#include <chrono>
#include <cstdio>

#include "agenda/char_positions.h"
#include "agenda/entries.h"
#include "agenda/text_marks.h"
#include "calendar/month_names.h"

namespace vt {

namespace {

using std::chrono::days;
using std::chrono::sys_days;

constexpr int kEarliestYear = 1;
constexpr int kLatestYear = 9999;

std::string TwoDigitDay(Date date) {
    char buf[8];
    std::snprintf(buf, sizeof buf, "%02u", static_cast<unsigned>(date.day()));
    return buf;
}

std::string CentreCaption(Date displayed) {
    char year[16];
    std::snprintf(year, sizeof year, "%04d", static_cast<int>(displayed.year()));
    return MonthName(displayed, true, "C") + " - " + year;
}

// The cell that shows `date`, or nothing when the date is off the grid. Each entry's date is
// read once and dropped into its cell, so a full agenda costs one pass over each list instead
// of one pass per cell.
std::optional<std::size_t> CellOf(std::optional<Date> date, sys_days start) {
    if (!date) {
        return std::nullopt;
    }
    const auto offset = (sys_days{*date} - start).count();
    if (offset < 0 || offset >= kGridCells) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(offset);
}

bool HiddenFromCalendar(std::string_view alarm_entry) {
    return CharMid(alarm_entry, 28, 1) == "-";
}

bool HighPriority(std::string_view alarm_entry) {
    return CharMid(alarm_entry, 26, 1) == "1";
}

bool WithinWritableYears(Date date) {
    const int year = static_cast<int>(date.year());
    return year >= kEarliestYear && year <= kLatestYear;
}

}  // namespace

std::optional<Rgb> FixedCellRgb(CellColour colour) {
    switch (colour) {
        case CellColour::OtherMonth:
            return Rgb{204, 204, 204};
        case CellColour::Today:
            return Rgb{255, 255, 192};
        case CellColour::Priority:
            return Rgb{192, 255, 192};
        case CellColour::Window:
            break;
    }
    return std::nullopt;
}

MonthGrid FillMonthGrid(Date displayed, Date today, const EntryList& alarms, const EntryList& repetitions) {
    MonthGrid grid;
    grid.caption = CentreCaption(displayed);
    if (displayed != today) {
        displayed = Date{displayed.year(), displayed.month(), std::chrono::day{1}};
    }
    grid.displayed = displayed;
    grid.start = AddDays(displayed, -(WeekdayMonday1(displayed) - 1));

    const sys_days start{grid.start};
    for (std::size_t i = 0; i < grid.cells.size(); ++i) {
        DayCell& cell = grid.cells[i];
        cell.date = Date{start + days{static_cast<int>(i)}};
        cell.caption = TwoDigitDay(cell.date);
        cell.colour = cell.date.month() != displayed.month() ? CellColour::OtherMonth : CellColour::Window;
        if (cell.date == today) {
            cell.colour = CellColour::Today;
        }
    }

    // Repetitions before alarms, each list in its own order: that is the order of the tag.
    for (const std::string& entry : repetitions) {
        const auto at = CellOf(ParseDate(CharMid(entry, 1, 10)), start);
        if (!at) {
            continue;
        }
        DayCell& cell = grid.cells[*at];
        cell.underline = true;
        cell.tag += GetRepetitionField(entry, 6);
        cell.tag += " // ";
    }
    for (const std::string& entry : alarms) {
        const auto at = CellOf(AlarmDate(entry), start);
        if (!at || HiddenFromCalendar(entry)) {
            continue;
        }
        DayCell& cell = grid.cells[*at];
        // An alarm with a start date does not exist before it, so no day before it shows it.
        if (!AlarmActiveOn(cell.date, entry)) {
            continue;
        }
        cell.bold = true;
        cell.tag += AnniversaryText(GetAlarmField(entry, 11), static_cast<int>(cell.date.year()));
        cell.tag += " // ";
        if (HighPriority(entry)) {
            cell.colour = CellColour::Priority;
        }
    }
    return grid;
}

Date MoveDisplayedDate(Date displayed, Date today, int button) {
    Date moved = displayed;
    switch (button) {
        case 0:
            moved = AddYears(displayed, -1);
            break;
        case 1:
            if (displayed == today && today.day() != std::chrono::day{1}) {
                moved = Date{today.year(), today.month(), std::chrono::day{1}};
            } else {
                moved = AddMonths(displayed, -1);
            }
            break;
        case 2:
            moved = AddMonths(displayed, 1);
            break;
        case 3:
            moved = AddYears(displayed, 1);
            break;
        case 4:
            moved = today;
            break;
        default:
            break;
    }
    return WithinWritableYears(moved) ? moved : displayed;
}

}  // namespace vt
