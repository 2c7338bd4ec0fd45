#pragma once
// What the iCalendar export and import share: the dates the program itself gives an alarm,
// the system's time zone, and the few names both sides of the exchange agree on.

#include <string>
#include <string_view>
#include <vector>

#include "store/dates.h"

namespace vt {

// The alarm list holds at most this many entries, and so does the list of reminders: the
// settings file numbers their keys from 001 to 998.
inline constexpr int kMaxAgendaEntries = 998;

// Properties of our own in the exported file. Calendar programs keep them untouched, and they
// carry back what iCalendar has no word for: the repeat choice of a series written date by date
// (RDATE), the stored text when the summary leaves out its start tag, and which events are
// pending reminders rather than alarms.
inline constexpr const char* kRepeatProperty = "X-VENDRAKO-REPETIR";
inline constexpr const char* kTextProperty = "X-VENDRAKO-TEXTO";
inline constexpr const char* kReminderProperty = "X-VENDRAKO-RECORDATORIO";

// The occurrences of an alarm between from and to (both included), by the program's own rule:
// each one is the next-occurrence step from the one before, starting at the stored date, so
// "1 Día" keeps to working days and "1 Mes" from the 31st drifts as the stored date does.
// Dates before the alarm's start tag are left out, as the month calendar leaves them out.
// Empty for an alarm that does not read or whose unit is not D, M or A.
std::vector<Date> AlarmOccurrences(std::string_view alarm_entry, Date from, Date to);

// The time zone the desktop runs in, as a zoneinfo name ("Europe/Madrid"): TZ when it names a
// zone, else the target of /etc/localtime, else /etc/timezone; "" when none of them tells.
std::string SystemTimeZoneName();

}  // namespace vt
