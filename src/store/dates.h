#pragma once
// Every date and time the program reads or writes passes through these helpers, so that no
// part of it parses a date by hand. Dates are std::chrono calendar dates; a date-time is a
// local (wall-clock) time point with whole seconds.

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace vt {

using Date = std::chrono::year_month_day;
using DateTime = std::chrono::local_seconds;

Date MakeDate(int day, int month, int year);
DateTime MakeDateTime(Date date, int hour = 0, int minute = 0, int second = 0);
Date DateOf(DateTime moment);
// Minutes since midnight of a moment (seconds dropped).
int MinutesOfDay(DateTime moment);
int SecondsOfDay(DateTime moment);

// Monday = 1 .. Sunday = 7.
int WeekdayMonday1(Date date);

// Month and year steps clamp the day to the last day of the target month (31/01 + 1 month
// is 28/02 or 29/02).
Date AddMonths(Date date, int months);
Date AddYears(Date date, int years);
Date AddDays(Date date, int days);

// "dd/mm/yyyy"
std::string FormatDate(Date date);
// "dd-mm-yy", the work date's form.
std::string FormatWorkDate(Date date);
// "hh:mm" for a number of minutes since midnight (0..1439).
std::string FormatTimeOfDay(int minutes);
// "hh:mm" of a moment.
std::string FormatTime(DateTime moment);
// "dd/mm/yyyy hh:mm:ss", the time stamp of every file the program writes.
std::string FormatDateTime(DateTime moment);

// Two-digit years: 51..99 are 1951..1999, 00..50 are 2000..2050.
int ExpandTwoDigitYear(int yy);

// "dd/mm/yyyy" (day and month may have one digit). Empty when it is no real date.
std::optional<Date> ParseDate(std::string_view text);
// "dd-mm-yy" or "dd-mm-yyyy".
std::optional<Date> ParseWorkDate(std::string_view text);
// "hh:mm" (hour may have one digit) -> minutes since midnight.
std::optional<int> ParseTimeOfDay(std::string_view text);
// "dd/mm/yyyy", "dd/mm/yyyy hh:mm" or "dd/mm/yyyy hh:mm:ss".
std::optional<DateTime> ParseDateTime(std::string_view text);

// The "never" moment of the last-scan value: 01/01/1901 00:00:00.
DateTime NeverScanned();

}  // namespace vt
