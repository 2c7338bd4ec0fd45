#pragma once
// The day at a glance, for desktop bars: today's departure, the time left or over, the week's
// balance and the next reminder, as one line or as a JSON object (waybar's "text", "tooltip"
// and "class", with the values beside them for other bars).

#include <optional>
#include <string>

#include "history/work_history.h"
#include "store/app_state.h"

namespace vt {

struct DayStatus {
    std::string text;                               // the one line
    std::string tooltip;                            // lines joined with "\n"
    std::string css_class;                          // "sin-fichar", "pendiente", "trabajando", "cumplida", "error"
    std::optional<std::string> departure;           // "hh:mm"
    std::optional<int> minutes_left;                // negative once the departure has passed
    int week_balance = 0;                           // the week's closed days, today left out
    std::optional<std::string> next_reminder_when;  // "dd/mm/yyyy hh:mm"
    std::string next_reminder_text;
};

DayStatus ComputeDayStatus(const Settings& settings, const WorkHistory& history, DateTime now);
std::string DayStatusJson(const DayStatus& status);

}  // namespace vt
