#pragma once
// Events from an iCalendar file (as calendar programs export them) into the agenda. Planning
// reads the whole file and changes nothing; the user sees what will be added and what had to
// be simplified, and only then is the plan applied.

#include <string>
#include <string_view>
#include <vector>

#include "agenda/launching.h"
#include "store/app_state.h"
#include "store/dates.h"

namespace vt {

struct IcsImportPlan {
    bool calendar = false;               // false: the text is no iCalendar file at all
    std::vector<std::string> alarms;     // entries to add, in the file's order
    std::vector<std::string> reminders;  // pending reminders this program exported
    // One line per event added other than as it stands ("dd/mm/yyyy hh:mm text: why").
    std::vector<std::string> simplified;
    // One line per event that could not be read and is not added.
    std::vector<std::string> unreadable;
    int duplicates = 0;  // already in the agenda (same date, time and text), or twice in the file
    int past = 0;        // with no occurrence from now on
    int over_limit = 0;  // left out because the agenda would pass its 998 entries
};

// Reads `text` as iCalendar and decides what the agenda gains, as seen at `now` in the time
// zone `zone` (a zoneinfo name; "" treats every time as local wall-clock time).
//  - An event whose repetition is exactly one of the editor's nine choices becomes an alarm
//    with that choice at its next occurrence; any other repeating event becomes a one-time
//    alarm at its next occurrence and is listed in `simplified`.
//  - A date without time (an all-day event) is taken at 00:00; times in other zones are moved
//    to `zone`; a time zone that neither the file nor the system knows makes the event unreadable.
//  - Texts lose line breaks, characters Windows-1252 cannot hold become "?" (and are listed),
//    and "!"-style priority comes from PRIORITY 1 to 4; notice days from an alarm a whole
//    number of days before, else the editor's default for the choice.
//  - A file cut short loses only the event it was cut in.
IcsImportPlan PlanIcsImport(std::string_view text, const Settings& agenda, DateTime now, const std::string& zone);

// The question shown before anything is added: what will be added, the simplified and
// unreadable lists (the first ones of each, with how many more), and what was left out.
std::string ImportQuestion(const IcsImportPlan& plan);
// True when the plan adds nothing at all.
bool ImportAddsNothing(const IcsImportPlan& plan);

// Adds the planned alarms (each with its "NEW> " run-log line) and reminders.
void ApplyIcsImport(const IcsImportPlan& plan, Settings& agenda, const RunLog& run_log);

}  // namespace vt
