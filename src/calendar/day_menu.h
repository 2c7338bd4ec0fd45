#pragma once
// What the pop-up menu of a day button offers: the day itself (for adding a new alarm or
// repetition on it) and every entry stored for that day, so that the user can open it.

#include <string>
#include <vector>

#include "store/dates.h"
#include "store/entry_list.h"

namespace vt {

struct DayMenuRow {
    std::string kind;  // "ALA" an alarm, "REP" a repetition
    int index = 0;     // the entry's place in its list, from 1
    std::string caption;
    friend bool operator==(const DayMenuRow&, const DayMenuRow&) = default;
};

struct DayMenu {
    std::string date_caption;  // "dd/mm/yyyy", the menu's first item
    std::vector<DayMenuRow> rows;
    bool separator = false;  // shown only when there is at least one entry row
};

// What the user chose from a day's menu.
struct DayMenuChoice {
    enum class Kind { AddRepetition, AddAlarm, DateItem, Detail };
    Kind kind = Kind::DateItem;
    int row = 0;  // for Detail: the chosen row, from 1
};

// Alarms come first, captioned "[ALA] " and their full text; then repetitions, "[REP] " and
// their time and text. (The day's tag lists repetitions first; both orders are kept as the
// user has always seen them.) Alarms marked "-" to stay off the calendar are offered here all
// the same: this menu is the way to reach an entry of that day and edit it, and hiding it
// would leave the mark with no way back from the calendar. Entries whose date does not read
// are passed over.
DayMenu BuildDayMenu(Date cell_date, const EntryList& alarms, const EntryList& repetitions);

}  // namespace vt
