#include "calendar/day_menu.h"

#include "agenda/entries.h"

namespace vt {

DayMenu BuildDayMenu(Date cell_date, const EntryList& alarms, const EntryList& repetitions) {
    DayMenu menu;
    menu.date_caption = FormatDate(cell_date);
    for (int j = 1; j <= alarms.Count(); ++j) {
        if (AlarmDate(alarms[j]) == cell_date) {
            menu.rows.push_back({"ALA", j, "[ALA] " + GetAlarmField(alarms[j], 6)});
        }
    }
    for (int j = 1; j <= repetitions.Count(); ++j) {
        if (ParseDate(GetRepetitionField(repetitions[j], 1)) == cell_date) {
            menu.rows.push_back({"REP", j, "[REP] " + GetRepetitionField(repetitions[j], 8)});
        }
    }
    menu.separator = !menu.rows.empty();
    return menu;
}

}  // namespace vt
