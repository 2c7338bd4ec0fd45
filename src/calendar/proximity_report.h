#pragma once
// The proximity report: a short text of the alarms due soon, grouped by how soon. Shown at
// start-up, from the menus and at the end of the closing path.

#include <string>

#include "store/dates.h"
#include "store/entry_list.h"

namespace vt {

inline constexpr const char* kEmptyProximityReport = "(Informe de proximidad vacío)";

// Walks the alarms in list order. An alarm enters once its notice days are reached (its date
// minus its notice days is today or earlier) and goes to the first group that holds:
//   "HOY:" today, "MAÑANA:" tomorrow, "Pasado mañana:" the day after,
//   "Antes de una semana:" before today + 7 (an alarm already past lands here too),
//   "Antes de 15 días:" before today + 14; anything later is left out.
// A group's header is written where its first alarm is met and later members follow wherever
// the text then ends: the groups are not sorted, so only an alarm list in date order (as it is
// kept) gives the groups in the order above. Lines end in CR LF; the week and fifteen-day
// groups name the weekday and day ("- Viernes 15 : text"). Repetitions never appear. Alarms
// whose date or notice days do not read are left out.
std::string ProximityReport(const EntryList& alarms, Date today);

}  // namespace vt
