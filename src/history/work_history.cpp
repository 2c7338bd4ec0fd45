#include "history/work_history.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "store/cp1252.h"
#include "workday/workday.h"

namespace vt {

namespace {

constexpr size_t kFieldCount = 8;

std::vector<std::string_view> SplitFields(std::string_view line) {
    std::vector<std::string_view> fields;
    size_t start = 0;
    for (;;) {
        const size_t semicolon = line.find(';', start);
        fields.push_back(line.substr(start, semicolon - start));
        if (semicolon == std::string_view::npos) {
            return fields;
        }
        start = semicolon + 1;
    }
}

// A stored time is exactly "hh:mm", as the clock-in boxes store it.
std::optional<int> StrictTime(std::string_view text) {
    if (text.size() != 5) {
        return std::nullopt;
    }
    return ParseTimeOfDay(text);
}

bool IsAbsenceKind(std::string_view text) {
    return std::find(std::begin(kAbsenceKinds), std::end(kAbsenceKinds), text) != std::end(kAbsenceKinds);
}

int Minutes(const std::string& time) {
    return StrictTime(time).value_or(0);
}

std::string_view WithoutCr(std::string_view line) {
    return !line.empty() && line.back() == '\r' ? line.substr(0, line.size() - 1) : line;
}

// Hours with two decimals and a decimal comma, as a Spanish spreadsheet reads a number.
std::string DecimalHours(int minutes) {
    const int hundredths = (std::abs(minutes) * 100 + 30) / 60;
    std::string text = std::to_string(hundredths / 100) + ",";
    const int rest = hundredths % 100;
    text += (rest < 10 ? "0" : "") + std::to_string(rest);
    return minutes < 0 && hundredths != 0 ? "-" + text : text;
}

}  // namespace

const HistoryDay* WorkHistory::Find(Date date) const {
    const auto at =
        std::lower_bound(days.begin(), days.end(), date, [](const HistoryDay& day, Date d) { return day.date < d; });
    return at != days.end() && at->date == date ? &*at : nullptr;
}

void WorkHistory::Put(HistoryDay day) {
    const auto at = std::lower_bound(days.begin(), days.end(), day.date,
                                     [](const HistoryDay& d, Date date) { return d.date < date; });
    if (at != days.end() && at->date == day.date) {
        *at = std::move(day);
    } else {
        days.insert(at, std::move(day));
    }
}

std::optional<std::string> HistoryDayProblem(const HistoryDay& day) {
    const std::array<const std::string*, 4> times{&day.entrada1, &day.salida1, &day.entrada2, &day.salida};
    int last = -1;
    for (const std::string* text : times) {
        if (text->empty()) {
            continue;
        }
        const auto minutes = StrictTime(*text);
        if (!minutes) {
            return "Formato no válido.";
        }
        if (*minutes < last) {
            return "Las horas deben ser consecutivas.";
        }
        last = *minutes;
    }
    // Nothing without an arrival, no return without a break; a leaving time may follow a break
    // whose return was not clocked in (the day then stays open until it is completed).
    if ((day.entrada1.empty() && last != -1) || (day.salida1.empty() && !day.entrada2.empty())) {
        return "No puede haber fichajes intermedios vacíos.";
    }
    if (!StrictTime(day.required)) {
        return "Formato no válido.";
    }
    if (!IsAbsenceKind(day.absence)) {
        return "Escribe festivo, vacaciones, baja o nada.";
    }
    return std::nullopt;
}

std::optional<HistoryDay> ParseHistoryLine(std::string_view line) {
    const std::vector<std::string_view> fields = SplitFields(line);
    if (fields.size() != kFieldCount || fields[0].size() != 10) {
        return std::nullopt;
    }
    const auto date = ParseDate(fields[0]);
    if (!date || (fields[5] != "C" && fields[5] != "P") || !IsAbsenceKind(fields[7])) {
        return std::nullopt;
    }
    HistoryDay day{*date,
                   std::string(fields[1]),
                   std::string(fields[2]),
                   std::string(fields[3]),
                   std::string(fields[4]),
                   std::string(fields[5]),
                   std::string(fields[6]),
                   std::string(fields[7])};
    if (HistoryDayProblem(day)) {
        return std::nullopt;
    }
    return day;
}

std::string HistoryLine(const HistoryDay& day) {
    return FormatDate(day.date) + ";" + day.entrada1 + ";" + day.salida1 + ";" + day.entrada2 + ";" + day.salida + ";" +
           day.mode + ";" + day.required + ";" + day.absence;
}

WorkHistory ParseHistory(std::string_view bytes) {
    WorkHistory history;
    size_t start = 0;
    while (start < bytes.size()) {
        size_t end = bytes.find('\n', start);
        if (end == std::string_view::npos) {
            end = bytes.size();
        }
        const std::string_view raw = bytes.substr(start, end - start);
        start = end + 1;
        const std::string_view line = WithoutCr(raw);
        if (line.empty() || line == kHistoryHeader) {
            continue;
        }
        // Every field the program writes is ASCII; a line with any other byte does not read
        // and is kept as its bytes.
        if (auto day = ParseHistoryLine(line)) {
            // Lines are appended in time order, so a later line for a date replaces the earlier.
            history.Put(std::move(*day));
        } else {
            history.unreadable.emplace_back(line);
        }
    }
    return history;
}

std::string HistoryFileBytes(const WorkHistory& history) {
    std::string bytes = std::string(kHistoryHeader) + "\r\n";
    for (const HistoryDay& day : history.days) {
        bytes += HistoryLine(day) + "\r\n";
    }
    for (const std::string& line : history.unreadable) {
        bytes += line + "\r\n";
    }
    return bytes;
}

DayKind KindOf(const HistoryDay& day, Date today) {
    if (day.date > today) {
        return DayKind::Future;
    }
    if (!day.absence.empty()) {
        return DayKind::Absence;
    }
    if (day.entrada1.empty()) {
        return DayKind::NoClockIn;
    }
    if (WorkedMinutes(day)) {
        return DayKind::Closed;
    }
    return day.date == today ? DayKind::InProgress : DayKind::Open;
}

std::optional<int> WorkedMinutes(const HistoryDay& day) {
    if (day.entrada1.empty()) {
        return 0;
    }
    // A break whose return was never clocked in leaves the afternoon unknown.
    if (day.salida.empty() || (!day.salida1.empty() && day.entrada2.empty())) {
        return std::nullopt;
    }
    if (day.salida1.empty()) {
        return Minutes(day.salida) - Minutes(day.entrada1);
    }
    return Minutes(day.salida1) - Minutes(day.entrada1) + Minutes(day.salida) - Minutes(day.entrada2);
}

int RequiredMinutes(const HistoryDay& day) {
    return day.absence.empty() ? Minutes(day.required) : 0;
}

Totals SumDays(const WorkHistory& history, Date from, Date to, Date today) {
    Totals totals;
    auto at = std::lower_bound(history.days.begin(), history.days.end(), from,
                               [](const HistoryDay& day, Date d) { return day.date < d; });
    for (; at != history.days.end() && at->date <= to; ++at) {
        switch (KindOf(*at, today)) {
            case DayKind::Future:
                ++totals.future;
                break;
            case DayKind::Open:
                ++totals.open;
                break;
            case DayKind::InProgress:
                break;
            default:
                totals.worked += WorkedMinutes(*at).value_or(0);
                totals.required += RequiredMinutes(*at);
                ++totals.counted;
                break;
        }
    }
    return totals;
}

Date WeekStart(Date date) {
    return AddDays(date, 1 - WeekdayMonday1(date));
}

Date MonthStart(Date date) {
    return date.year() / date.month() / std::chrono::day{1};
}

Date MonthEnd(Date date) {
    return date.year() / date.month() / std::chrono::last;
}

BalanceSummary Summarize(const WorkHistory& history, Date date, Date today) {
    BalanceSummary summary;
    summary.day = SumDays(history, date, date, today);
    summary.week = SumDays(history, WeekStart(date), AddDays(WeekStart(date), 6), today);
    summary.month = SumDays(history, MonthStart(date), MonthEnd(date), today);
    if (!history.days.empty()) {
        summary.all = SumDays(history, history.days.front().date, history.days.back().date, today);
    }
    return summary;
}

std::string FormatMinutes(int minutes, bool signed_plus) {
    const int magnitude = std::abs(minutes);
    const int rest = magnitude % 60;
    std::string text = std::to_string(magnitude / 60) + (rest < 10 ? ":0" : ":") + std::to_string(rest);
    if (minutes < 0) {
        return "-" + text;
    }
    return signed_plus ? "+" + text : text;
}

std::string HistoryCsv(const WorkHistory& history, Date from, Date to, Date today) {
    std::string text = "Fecha;Día;Entrada 1;Salida 1;Entrada 2;Salida;Trabajado;Previsto;Saldo;Ausencia\r\n";
    auto at = std::lower_bound(history.days.begin(), history.days.end(), from,
                               [](const HistoryDay& day, Date d) { return day.date < d; });
    for (; at != history.days.end() && at->date <= to; ++at) {
        const HistoryDay& day = *at;
        const DayKind kind = KindOf(day, today);
        const bool counts = kind != DayKind::Future && kind != DayKind::Open && kind != DayKind::InProgress;
        const int worked = WorkedMinutes(day).value_or(0);
        const int required = RequiredMinutes(day);
        text += FormatDate(day.date) + ";" + WeekdayName(day.date) + ";" + day.entrada1 + ";" + day.salida1 + ";" +
                day.entrada2 + ";" + day.salida + ";" + (counts ? DecimalHours(worked) : "") + ";" +
                (counts ? DecimalHours(required) : "") + ";" + (counts ? DecimalHours(worked - required) : "") + ";" +
                day.absence + "\r\n";
    }
    const Totals totals = SumDays(history, from, to, today);
    text += "Total;;;;;;" + DecimalHours(totals.worked) + ";" + DecimalHours(totals.required) + ";" +
            DecimalHours(totals.Balance()) + ";\r\n";
    return Utf8ToCp1252(text);
}

}  // namespace vt
