#include "history/history_month.h"

#include "workday/workday.h"

namespace vt {

HistoryMonth BuildHistoryMonth(const WorkHistory& history, Date month, Date today) {
    HistoryMonth result;
    int running = 0;
    for (Date d = MonthStart(month); d <= MonthEnd(month); d = AddDays(d, 1)) {
        HistoryMonthRow row;
        row.date = d;
        row.cells[kColDay] = FormatDate(d);
        row.cells[kColWeekday] = WeekdayName(d);
        if (const HistoryDay* day = history.Find(d)) {
            row.recorded = true;
            row.kind = KindOf(*day, today);
            row.cells[kColEntrada1] = day->entrada1;
            row.cells[kColSalida1] = day->salida1;
            row.cells[kColEntrada2] = day->entrada2;
            row.cells[kColSalida] = day->salida;
            row.cells[kColRequired] = day->absence.empty() ? day->required : "00:00";
            row.cells[kColAbsence] = day->absence;
            switch (row.kind) {
                case DayKind::Open:
                    row.cells[kColWorked] = "abierta";
                    break;
                case DayKind::InProgress:
                    row.cells[kColWorked] = "en curso";
                    break;
                case DayKind::Future:
                    row.cells[kColWorked] = "fecha futura";
                    break;
                default:
                    row.worked = WorkedMinutes(*day).value_or(0);
                    row.required = RequiredMinutes(*day);
                    running += row.worked - row.required;
                    row.cells[kColWorked] = FormatMinutes(row.worked);
                    row.cells[kColBalance] = FormatMinutes(row.worked - row.required, true);
                    break;
            }
        }
        row.running = running;
        result.rows.push_back(std::move(row));
    }
    result.summary = Summarize(history, month, today);
    const Totals& m = result.summary.month;
    result.totals_text = "Mes: trabajado " + FormatMinutes(m.worked) + ", previsto " + FormatMinutes(m.required) +
                         ", saldo " + FormatMinutes(m.Balance(), true) +
                         "    Desde el principio: " + FormatMinutes(result.summary.all.Balance(), true);
    if (m.open > 0) {
        result.totals_text += "    Jornadas abiertas: " + std::to_string(m.open);
    }
    return result;
}

HistoryDay EditedDay(const WorkHistory& history, Date date, int column, const std::string& text) {
    HistoryDay day;
    if (const HistoryDay* recorded = history.Find(date)) {
        day = *recorded;
    } else {
        day = HistoryDay{date, "", "", "", "", "C", "00:00", ""};
    }
    switch (column) {
        case kColEntrada1:
            day.entrada1 = text;
            break;
        case kColSalida1:
            day.salida1 = text;
            break;
        case kColEntrada2:
            day.entrada2 = text;
            break;
        case kColSalida:
            day.salida = text;
            break;
        case kColRequired:
            day.required = text;
            break;
        case kColAbsence:
            day.absence = text;
            break;
        default:
            break;
    }
    return day;
}

}  // namespace vt
