#pragma once
// Alarms and repetitions live in memory exactly as the settings file stores them: one string
// per entry, fields at fixed character positions. Nothing parses an entry into a structure, so
// an entry the program cannot read (a hand-edited file) is carried through every save unchanged.
//
// Alarm:      "dd/mm/yyyy hh:mm cc u nn p text"
//              field 1 date (1-10), 2 time (12-16), 4 repeat count (18-19, "00" never repeats),
//              3 unit (21: "D" days, "M" months, "A" years), 5 notice days (23-24),
//              9 priority (26: "1" high), 6 text (28 on), 7 date and time (1-16).
//              10 start date "dd/mm/yy" and 11 text without its tag (agenda/text_marks.h).
// Repetition: "dd/mm/yyyy hh:mm text"
//              field 1 date, 2 time, 6 text (18 on), 7 date and time (1-16), 8 time and text (12 on).

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Fields 10 and 11, the start date and anniversaries, so that one include gives all of an entry.
#include "agenda/text_marks.h"
#include "store/dates.h"
#include "store/entry_list.h"

namespace vt {

struct Settings;

// A field by number; a number the layout does not have (8 for alarms, for instance) and any
// field of a short string give "" or whatever part of it the string holds.
std::string GetAlarmField(std::string_view entry, int field);
// The same for alarm `index` (1-based); an index outside the list gives "".
std::string GetAlarmField(const EntryList& alarms, int index, int field);
std::string GetRepetitionField(std::string_view entry, int field);

// Texts are stored without commas, because the settings file's values may not hold one: each
// "," becomes ";" for good (a saved text shows ";" where the user typed ","). Counts are
// written with at least two digits.
std::string BuildAlarmEntry(std::string_view date, std::string_view time, int count, std::string_view unit,
                            int notice_days, std::string_view priority, std::string_view text);
// A date or time that reads is written in its canonical form ("dd/mm/yyyy", "hh:mm"); anything
// else is kept as given, so a reminder is never lost over its form.
std::string BuildRepetitionEntry(std::string_view date, std::string_view time, std::string_view text);

void AppendAlarm(EntryList& alarms, std::string entry);
void AppendRepetition(EntryList& repetitions, std::string entry);
// Later entries move down one place; an index outside the list changes nothing.
void RemoveAlarm(EntryList& alarms, int index);
void RemoveRepetition(EntryList& repetitions, int index);

// The values of an entry's fields, read without copying; nothing when the field does not read.
std::optional<Date> AlarmDate(std::string_view entry);
std::optional<int> AlarmTime(std::string_view entry);  // minutes since midnight
std::optional<int> AlarmCount(std::string_view entry);
std::optional<int> AlarmNoticeDays(std::string_view entry);
// An alarm is readable when its date, time, repeat count and notice days read: those are what
// launching and advancing need to rebuild it. An unreadable alarm is left where it is and as it
// is by everything that compares or moves dates.
bool AlarmReadable(std::string_view entry);

// An alarm's fields at their character places, found in one walk over the entry, with the values
// of the four that must read; for code that needs several fields of every alarm.
struct AlarmParts {
    std::string_view time;  // as stored, "hh:mm"
    std::string_view unit;
    std::string_view priority;
    std::string_view text;
    std::optional<Date> date;
    std::optional<int> minutes;
    std::optional<int> count;
    std::optional<int> notice_days;
    bool Readable() const { return date && minutes && count && notice_days; }
};
AlarmParts ReadAlarm(std::string_view entry);
// Field 7 of a repetition, "dd/mm/yyyy hh:mm", as a date-time. Only that form reads: the program
// never writes another, and a hand edit that does is reported rather than guessed at.
std::optional<DateTime> RepetitionMoment(std::string_view entry);

// Ascending by date (field 1, as dates; the time is not compared). Alarms with the same date
// keep their order, as the bubble sort that first kept this list did; a stable sort gives
// exactly that order for any strict weak order, so it is used instead. Alarms whose date does
// not read go after all the others, in their own order, since they have no date to be placed by.
void SortAlarms(EntryList& alarms);

// Puts entries in the order of the key key_of gives each, stably; entries without a key go
// last, in their own order.
void StableSortByKey(EntryList& entries, std::optional<long long> (*key_of)(std::string_view entry));

// The keys ("REP_012", "ALA_003") of the entries that do not read, numbered as the next save
// will number them, repetitions first as in the file. Empty when all read.
std::vector<std::string> UnreadableEntryKeys(const Settings& settings);

}  // namespace vt
