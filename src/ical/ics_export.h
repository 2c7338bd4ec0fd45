#pragma once
// The agenda as an iCalendar file (RFC 5545), for phones and mail programs.

#include <string>

#include "store/app_state.h"
#include "store/dates.h"

namespace vt {

// How far ahead a series the rules of iCalendar cannot express is written out date by date.
inline constexpr int kExplicitDatesYears = 10;

struct IcsExport {
    std::string text;    // the whole file, UTF-8 with CR LF
    int alarms = 0;      // alarms written
    int reminders = 0;   // pending reminders written
    int unreadable = 0;  // entries left out because they do not read
};

// Every alarm and every pending reminder, in the time zone `zone` (a zoneinfo name; the
// system's one in the program). An unknown or empty zone writes floating times, which every
// calendar shows at the same wall-clock time, as the program does.
//
// An alarm is one event at its stored date and time with a UID that does not change when the
// date advances, so that a second export updates the events of the first. Its summary is its
// text without the start tag, "(yyyy)" groups kept; priority "1" gives PRIORITY:1; notice days
// give an alarm that many days before, besides the one at its time. Its repetition is an RRULE
// where the rule gives exactly the program's dates ("1 Día" Monday to Friday; months from a
// day up to the 28th; years from any day but 29/02), and otherwise the program's own dates for
// kExplicitDatesYears years from `now` as RDATEs. Dates before a start tag are left out and an
// alarm whose text begins with "-" is not written, as in the month calendar.
IcsExport ExportAgendaToIcs(const Settings& settings, DateTime now, const std::string& zone);

}  // namespace vt
