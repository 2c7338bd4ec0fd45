#pragma once
// Marks the user writes into an alarm's text: a start date "<ddmmyy>" (the alarm exists only
// from that day on) and an anniversary year "(yyyy)" shown as the years elapsed. The stored
// text keeps both; these functions only read them.

#include <optional>
#include <string>
#include <string_view>

#include "store/dates.h"
#include "store/entry_list.h"

namespace vt {

// Fields 10 and 11 of an alarm, taken from its text (field 6).
struct StartDateTag {
    std::string date_field;     // "dd/mm/yy", or "" when there is no tag or it is no real date
    std::string text;           // the text without the tag, trimmed; the whole text untouched when no tag
    std::optional<Date> start;  // date_field as a date
};

// A tag is the first "<" with the first ">" at or after it exactly six characters further on,
// all six digits. Its "yy" is read as 1951..1999 for 51..99 and 2000..2050 for 00..50, the same
// window as every two-digit year the program reads; date_field is kept only when that makes a
// real date (29/02/00 is one, 29/02/51 is not). A tag of six digits that is no date still
// leaves the text: every occurrence of it is removed and the rest trimmed.
StartDateTag SplitStartDateTag(std::string_view text);

std::optional<Date> AlarmStartDate(std::string_view alarm_entry);

// False only when the alarm has a start date later than `date`.
bool AlarmActiveOn(Date date, std::string_view alarm_entry);
// The same for alarm `index` (1-based); no alarm is active at an index outside the list.
bool AlarmActiveOn(Date date, const EntryList& alarms, int index);

// For display: the first "(" followed by four digits and ")" becomes the years from that year to
// `year`, negative for a year still to come, and every copy of that same group is replaced too.
// Only the first "(" is examined, even when a later one would qualify. The years elapsed are a
// 16-bit number, as the program always counted them; should they not fit (a year outside any
// calendar), the text is shown as it stands rather than with a wrong number.
std::string AnniversaryText(std::string_view text, int year);

}  // namespace vt
