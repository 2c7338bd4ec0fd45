#pragma once
// The task summary: for today, when each task began and ended and how long went to each,
// between the first clock-in and now, with the midday break taken out when a task follows it.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/dialogs.h"
#include "store/app_paths.h"
#include "store/dates.h"

namespace vt {

class Clock;

inline constexpr std::string_view kEntryTimeIncomplete =
    "La hora de entrada no es correcta. Comprueba que no tenga el foco.";

// The three clock-in boxes as their texts stand ("hh:mm", or empty when not entered yet).
struct ClockInTexts {
    std::string entrada1;
    std::string salida1;
    std::string entrada2;
};

// One event of the day: it opens at `start` and is closed by the next event's time.
struct SummaryEvent {
    std::string start;  // "hh:mm:ss"
    std::optional<std::string> end;
    std::string label;
};

// Adds one event: a line "hh:mm:ss label" to the text, the time as the end of the last open
// event, and, unless text_only, a new event opening at that time.
void AgregarEventoResumen(std::vector<SummaryEvent>& events, std::string& text, std::string_view time,
                          std::string_view label, bool text_only);

// The summary of these log lines for the day of `now`, or why there is none: the box to show,
// information for the summary, exclamation for an incomplete entry time or a task of 10 hours
// or more (its total does not fit the summary's arithmetic).
MessageBox ResumenTareas(const std::vector<std::string>& log_lines, const ClockInTexts& clock_ins, DateTime now);
// The same over TAREAS.LOG, read once.
MessageBox ResumenTareas(const AppPaths& paths, const Clock& clock, const ClockInTexts& clock_ins);

}  // namespace vt
