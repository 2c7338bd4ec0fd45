#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "store/app_state.h"
#include "store/dates.h"

namespace vt {

class Dialogs;

// "Lunes" .. "Domingo" for a date.
std::string WeekdayName(Date date);

// TodayHours and TodayMode from the weekly schedule for the weekday of the given date.
void TakeDaySchedule(AppState& state, Date date);

// The clock-in boxes by index: 0 "Entrada 1", 1 "Salida 1", 2 "Entrada 2".
const std::string& StoredTime(const Settings& settings, int index);
void StoreTime(Settings& settings, int index, std::string time);

// Settles the work date at start-up: an empty date becomes yesterday; a date before today
// becomes today, with the arrival taken as now and the afternoon cleared (starting the
// program on a new day records the arrival). A work date that cannot be read counts as an
// earlier day. The caller saves and refreshes afterwards, in every case.
void SettleWorkDate(AppState& state, DateTime now);

// The stored clock-ins that are neither empty nor a time of day (a hand-edited file), each as
// "ENTRADA1=abc", in the order of the boxes. They are kept as they are; the departure counts
// them as 00:00.
std::vector<std::string> UnreadableClockIns(const Settings& settings);

// Whether a clock-in box's text may be stored when the box is left: empty, or a whole "hh:mm".
bool IsStorableClockIn(std::string_view text);

// The departure label, status text and stage for this minute, set in the state. The clock-in
// error message is shown once, until its flag is cleared.
void UpdateDeparture(AppState& state, int now_minutes, Dialogs& dialogs);

// After the weekly schedule is closed: today's hours and mode afresh, and on a continuous day
// the afternoon clock-ins cleared (with a word to the user when there were any).
void ApplyScheduleToToday(AppState& state, Dialogs& dialogs);

}  // namespace vt
