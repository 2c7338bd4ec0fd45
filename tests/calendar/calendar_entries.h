#pragma once
// Short builders for the calendar tests: an alarm or a repetition by the fields these views
// read (date, notice days, priority, text), the rest filled in as the editors would.

#include <string>

#include "agenda/entries.h"
#include "entry_lists.h"
#include "store/dates.h"
#include "store/entry_list.h"

namespace vt::test {

inline std::string AlarmOn(Date date, const std::string& text, int notice_days = 14, const char* priority = "0") {
    return BuildAlarmEntry(FormatDate(date), "09:00", 0, "D", notice_days, priority, text);
}

inline std::string RepetitionOn(Date date, const std::string& text, const char* time = "10:30") {
    return BuildRepetitionEntry(FormatDate(date), time, text);
}

}  // namespace vt::test
