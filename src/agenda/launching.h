#pragma once
// Alarms do not fire by themselves: each full refresh of the agenda turns every alarm dated
// today or earlier into a repetition (a one-shot reminder for a date and minute), and the main
// timer looks every second for a repetition whose minute has come.

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/dialogs.h"
#include "store/dates.h"
#include "store/entry_list.h"

namespace vt {

using RunLog = std::function<void(const std::string&)>;

inline constexpr const char* kRemindersFullMessage =
    "La lista de repeticiones está llena (caben 998). Las alarmas que tocan ahora avisarán en cuanto borres alguna "
    "repetición.";

// What a launch did: the alarms launched, and the due alarms held back for want of room.
struct LaunchResult {
    int launched = 0;
    std::vector<int> held;  // their places in the alarm list once the launch is over, ascending
};

// Walks the alarms in order. Each alarm dated today or earlier gets a repetition for its stored
// date, time and text (without the start-date tag), and one run-log line "REP> " + the alarm's
// entry as it stood. Then:
//  - a non-repeating alarm (count 0) is removed;
//  - an alarm dated today is left for AdvanceStoredAlarmDates to move on;
//  - an alarm from a day the program did not run gets a second repetition for today when today
//    is one of its occurrences, without a log line. The days missed in between are not
//    replayed: at most the stored date and today are reminded. Its stored date is not moved here.
// Alarms that do not read are passed over. A due alarm whose repetitions would take the list
// past kMaxEntries is held: not launched, not logged, left as it is, so that it is launched by a
// later call once there is room, and never dropped by the file's limit.
// The caller rebuilds the repetitions menu afterwards.
LaunchResult LaunchDueAlarms(EntryList& alarms, EntryList& repetitions, Date today, Dialogs& dialogs,
                             const RunLog& run_log);

// The agenda refresh's last step: launch what is due, then move every alarm to its next date,
// except the alarms held, which keep their date until they can be launched. Returns how many
// were held.
int AdvanceAlarmDates(EntryList& alarms, EntryList& repetitions, Date today, Dialogs& dialogs, const RunLog& run_log);

// Ascending by date and time (field 7, as date-times); equal moments keep their order, and
// repetitions whose moment does not read go last, in their order.
void SortRepetitions(EntryList& repetitions);

// The first repetition from `start` on whose minute is not later than now's minute (seconds do
// not count on either side), or 0 when none is due. Repetitions that do not read are never due.
int FindDueRepetition(const EntryList& repetitions, DateTime now, int start = 1);

// The repeat-later choices in the order the dialog lists them. A code "hh:mm" is that many
// hours and minutes; a bare number is whole days.
struct RepeatChoice {
    std::string_view label;
    std::string_view code;
};
inline constexpr std::array<RepeatChoice, 10> kRepeatChoices{{
    {"5 Minutos", "00:05"},
    {"10 Minutos", "00:10"},
    {"15 Minutos", "00:15"},
    {"30 Minutos", "00:30"},
    {"1 Hora", "01:00"},
    {"2 Horas", "02:00"},
    {"4 Horas", "04:00"},
    {"6 Horas", "06:00"},
    {"1 Día", "1"},
    {"1 Semana", "7"},
}};

// When a reminder comes back: now (with its seconds) plus the choice's delay, written
// "dd/mm/yyyy hh:mm" with the seconds dropped, not rounded. A choice outside the table counts as
// the first one, so that a reminder is never dropped by mistake.
std::string RepeatLaterTarget(DateTime now, int choice);

// The repetition that replaces a due one: the target's date and time with the due entry's text.
std::string RepeatedEntry(std::string_view target, std::string_view due_entry);

}  // namespace vt
