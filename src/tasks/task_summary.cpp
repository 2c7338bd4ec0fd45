#include "tasks/task_summary.h"

#include <cstdint>
#include <limits>
#include <unordered_map>

#include "platform/clock.h"
#include "store/cp1252.h"
#include "tasks/task_log.h"

namespace vt {

namespace {

constexpr std::string_view kNewLine = "\r\n";
// They widen the message box, which otherwise wraps the longer total lines.
constexpr std::size_t kWideningBlanks = 50;

// "hh:mm:ss" → seconds since midnight; nothing for a time that cannot be read (a hand-edited
// log line of today with a broken time).
std::optional<int> SecondsOf(std::string_view time) {
    const auto moment = ParseDateTime("01/01/2001 " + std::string(time));
    if (!moment || time.size() != 8) {
        return std::nullopt;
    }
    return SecondsOfDay(*moment);
}

// The totals keep the program's 16-bit products: a task of 10 hours makes 10 × 3600, which does
// not fit, and the summary is refused rather than shown wrong.
std::optional<std::int16_t> Multiply16(long long a, long long b) {
    const long long product = a * b;
    if (a > std::numeric_limits<std::int16_t>::max() || product > std::numeric_limits<std::int16_t>::max() ||
        product < std::numeric_limits<std::int16_t>::min()) {
        return std::nullopt;
    }
    return static_cast<std::int16_t>(product);
}

std::string TwoDigits(long long value) {
    std::string digits = std::to_string(value);
    return digits.size() < 2 ? "0" + digits : digits;
}

struct Total {
    std::string label;
    long long seconds = 0;
};

}  // namespace

void AgregarEventoResumen(std::vector<SummaryEvent>& events, std::string& text, std::string_view time,
                          std::string_view label, bool text_only) {
    text += kNewLine;
    text += time;
    text += ' ';
    text += label;
    if (!events.empty()) {
        events.back().end = std::string(time);
    }
    if (!text_only) {
        events.push_back({std::string(time), std::nullopt, std::string(label)});
    }
}

MessageBox ResumenTareas(const std::vector<std::string>& log_lines, const ClockInTexts& clock_ins, DateTime now) {
    // The box may be half typed while it has the focus; characters, as the box counts them.
    if (Utf8Length(clock_ins.entrada1) != 5) {
        return {std::string(kEntryTimeIncomplete), MsgIcon::Exclamation, MsgButtons::Ok, {}, {}};
    }

    std::string text = "FICHAJES:";
    std::vector<SummaryEvent> events;
    const std::string day = FormatDate(DateOf(now));
    bool break_done = false;

    AgregarEventoResumen(events, text, clock_ins.entrada1 + ":00", "[entrada]", false);
    const std::string exit_time = clock_ins.salida1 + ":00";
    for (const std::string& line : log_lines) {
        if (TaskDateOf(line) != day) {
            continue;
        }
        const std::string_view time = TaskTimeOf(line);
        // Compared as text, as "hh:mm:ss" sorts by time. No task after the exit means the break
        // is simply counted to the task that was running.
        if (!break_done && !clock_ins.salida1.empty() && time > exit_time) {
            const std::string resumed = events.back().label;
            AgregarEventoResumen(events, text, exit_time, "[break]", false);
            if (!clock_ins.entrada2.empty()) {
                AgregarEventoResumen(events, text, clock_ins.entrada2 + ":00", resumed, false);
            }
            break_done = true;
        }
        AgregarEventoResumen(events, text, time, TaskNameOf(line), false);
    }
    const std::string final_time = FormatDateTime(now).substr(11);
    AgregarEventoResumen(events, text, final_time, "[final]", true);

    // Each label once, at its first appearance, with the seconds of all its events. A span that
    // ends before it starts (across midnight, or a task marked before the entry) counts nothing.
    std::vector<Total> totals;
    std::unordered_map<std::string_view, std::size_t> index_of;
    totals.reserve(events.size());
    for (const SummaryEvent& event : events) {
        long long seconds = 0;
        if (const auto start = SecondsOf(event.start); start && event.end) {
            if (const auto end = SecondsOf(*event.end); end && *end >= *start) {
                seconds = *end - *start;
            }
        }
        const auto [it, added] = index_of.try_emplace(event.label, totals.size());
        if (added) {
            totals.push_back({event.label, 0});
        }
        totals[it->second].seconds += seconds;
    }

    text += kNewLine;
    text += kNewLine;
    text += "TOTALES: ";
    text += kNewLine;
    for (const Total& total : totals) {
        long long s = total.seconds;
        const long long h = s / 3600;
        const auto hour_seconds = Multiply16(h, 3600);
        if (!hour_seconds) {
            return {"No se puede mostrar el resumen de tareas: la tarea \"" + total.label +
                        "\" suma 10 horas o más, y el resumen no cuenta tanto tiempo para una tarea.",
                    MsgIcon::Exclamation,
                    MsgButtons::Ok,
                    {},
                    {}};
        }
        s -= *hour_seconds;
        const long long m = s / 60;
        s -= *Multiply16(m, 60);
        text += total.label + " - " + TwoDigits(h) + ":" + TwoDigits(m) + ":" + TwoDigits(s) + std::string(kNewLine);
    }
    text.append(kWideningBlanks, ' ');
    return {text, MsgIcon::Information, MsgButtons::Ok, {}, {}};
}

MessageBox ResumenTareas(const AppPaths& paths, const Clock& clock, const ClockInTexts& clock_ins) {
    return ResumenTareas(ReadTaskLog(paths), clock_ins, clock.Now());
}

}  // namespace vt
