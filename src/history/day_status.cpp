#include "history/day_status.h"

#include <cstdio>

#include "agenda/entries.h"
#include "workday/departure.h"

namespace vt {

namespace {

// The earliest reminder or alarm still to come.
void FindNextReminder(const Settings& settings, DateTime now, DayStatus& status) {
    std::optional<DateTime> best;
    const auto consider = [&](std::optional<DateTime> moment, std::string text) {
        if (moment && *moment >= now && (!best || *moment < *best)) {
            best = moment;
            status.next_reminder_text = std::move(text);
        }
    };
    for (const std::string& entry : settings.Repetitions) {
        consider(RepetitionMoment(entry), GetRepetitionField(entry, 6));
    }
    for (const std::string& entry : settings.Alarms) {
        const auto date = AlarmDate(entry);
        const auto time = AlarmTime(entry);
        consider(date && time ? std::optional(MakeDateTime(*date, *time / 60, *time % 60)) : std::nullopt,
                 GetAlarmField(entry, 6));
    }
    if (best) {
        status.next_reminder_when = FormatDate(DateOf(*best)) + " " + FormatTime(*best);
    }
}

std::string JsonString(std::string_view text) {
    std::string out = "\"";
    for (const char c : text) {
        switch (c) {
            case '"':
                out += "\\\"";
                break;
            case '\\':
                out += "\\\\";
                break;
            case '\n':
                out += "\\n";
                break;
            default:
                if (static_cast<unsigned char>(c) < 0x20) {
                    char escaped[8];
                    std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(c));
                    out += escaped;
                } else {
                    out += c;
                }
        }
    }
    return out + "\"";
}

template <typename T, typename F>
std::string JsonOptional(const std::optional<T>& value, F format) {
    return value ? format(*value) : "null";
}

}  // namespace

DayStatus ComputeDayStatus(const Settings& s, const WorkHistory& history, DateTime now) {
    DayStatus status;
    const Date today = DateOf(now);
    const auto weekday = static_cast<size_t>(WeekdayMonday1(today));
    const auto work_date = ParseWorkDate(s.WorkDate);
    if (!work_date || *work_date != today || s.Entrada1.empty()) {
        status.text = "Sin fichar hoy";
        status.css_class = "sin-fichar";
    } else {
        const Departure d =
            ComputeDeparture({s.DayHours[weekday], s.DayMode[weekday], s.Entrada1, s.Salida1, s.Entrada2}, 0);
        const auto departure = ParseTimeOfDay(d.label);
        if (!d.consistent) {
            status.text = "Revisa los fichajes";
            status.css_class = "error";
        } else if (!departure) {
            status.text = "Salida pendiente";
            status.css_class = "pendiente";
        } else {
            status.departure = d.label;
            int left = *departure - MinutesOfDay(now);
            // A departure shown past midnight is still later today.
            if (left < -12 * 60) {
                left += 24 * 60;
            }
            status.minutes_left = left;
            status.text =
                "Salida " + d.label +
                (left > 0 ? " (quedan " + FormatMinutes(left) + ")" : " (" + FormatMinutes(-left) + " de más)");
            status.css_class = left > 0 ? "trabajando" : "cumplida";
        }
    }
    const Totals week = SumDays(history, WeekStart(today), AddDays(today, -1), today);
    status.week_balance = week.Balance();
    status.text += " | Semana " + FormatMinutes(week.Balance(), true);
    FindNextReminder(s, now, status);
    if (status.next_reminder_when) {
        status.text += " | Aviso " + *status.next_reminder_when + " " + status.next_reminder_text;
    }
    const BalanceSummary summary = Summarize(history, today, today);
    status.tooltip = "Semana (sin hoy): " + FormatMinutes(week.Balance(), true) +
                     "\nMes: " + FormatMinutes(summary.month.Balance(), true) +
                     "\nTotal: " + FormatMinutes(summary.all.Balance(), true);
    if (summary.all.open > 0) {
        status.tooltip += "\nJornadas abiertas: " + std::to_string(summary.all.open);
    }
    return status;
}

std::string DayStatusJson(const DayStatus& status) {
    const auto text = [](const std::string& value) { return JsonString(value); };
    const auto number = [](int value) { return std::to_string(value); };
    std::string reminder = "null";
    if (status.next_reminder_when) {
        reminder = "{\"momento\":" + JsonString(*status.next_reminder_when) +
                   ",\"texto\":" + JsonString(status.next_reminder_text) + "}";
    }
    return "{\"text\":" + JsonString(status.text) + ",\"tooltip\":" + JsonString(status.tooltip) +
           ",\"class\":" + JsonString(status.css_class) + ",\"hora_salida\":" + JsonOptional(status.departure, text) +
           ",\"minutos_restantes\":" + JsonOptional(status.minutes_left, number) +
           ",\"saldo_semana_minutos\":" + number(status.week_balance) + ",\"proximo_aviso\":" + reminder + "}";
}

}  // namespace vt
