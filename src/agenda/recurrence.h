#pragma once
// On which date a recurring alarm falls inside a range of dates. Alarm dates are stored, not
// derived: each advance writes the next occurrence back into the entry, so every step starts
// from the previous result. A month step from the 31st lands on the 28th of February and stays
// on the 28th afterwards (31/01 -> 28/02 -> 28/03); that drift is how the stored dates have
// always moved, and remembering the first day would move existing alarms to other dates.

#include <chrono>
#include <optional>
#include <string_view>

#include "platform/dialogs.h"
#include "store/dates.h"
#include "store/entry_list.h"

namespace vt {

// The upper end of an open range.
inline constexpr Date kOpenEnd{std::chrono::year{2999}, std::chrono::month{12}, std::chrono::day{31}};

// Steps `date` by `count` units ("D" days, "M" months, "A" years) in the direction of `step`
// (+1 later, -1 earlier; any other value counts as its sign) until a date lies in from..to
// (both included), and returns it; nothing when the search leaves the range in its direction.
// On return `date` holds the last date examined.
//  - skip_today: a date equal to `today` is never accepted.
//  - A count of exactly 1 day never accepts a Saturday or Sunday, so a daily alarm is a working-
//    day alarm; 7 days is not touched by this, and an alarm set on a Saturday stays on Saturdays.
//  - An unknown unit shows "MAL!" when a step is needed, and the search ends with nothing.
// The search never runs for ever: when the date cannot move (count 0) or moves away from the
// range, or would leave the years 1..9999, it ends with nothing instead.
std::optional<Date> NextOccurrence(Date& date, int count, std::string_view unit, Date from, Date to, int step,
                                   bool skip_today, Date today, Dialogs& dialogs);

// Moves every alarm to its next occurrence after today (so an alarm dated today, whose reminder
// has just been launched, goes on to its next date) and sorts the list. Alarms that do not read,
// and alarms for which no date is found (an unknown unit, after its "MAL!"), stay as they are.
void AdvanceStoredAlarmDates(EntryList& alarms, Date today, Dialogs& dialogs);

}  // namespace vt
