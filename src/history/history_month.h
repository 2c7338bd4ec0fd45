#pragma once
// What the history window shows of a month, worked out here so the window only draws it: one
// row per day of the month, recorded or not, and the running balance through the month.

#include <string>
#include <vector>

#include "history/work_history.h"

namespace vt {

enum HistoryColumn {
    kColDay,
    kColWeekday,
    kColEntrada1,
    kColSalida1,
    kColEntrada2,
    kColSalida,
    kColWorked,
    kColRequired,
    kColBalance,
    kColAbsence,
    kHistoryColumnCount
};
inline constexpr const char* kHistoryColumnTitles[kHistoryColumnCount] = {
    "Día", "", "Entrada 1", "Salida 1", "Entrada 2", "Salida", "Trabajado", "Previsto", "Saldo", "Ausencia"};

struct HistoryMonthRow {
    Date date{};
    bool recorded = false;
    DayKind kind = DayKind::NoClockIn;
    std::string cells[kHistoryColumnCount];
    int worked = 0;    // minutes, for the chart
    int required = 0;  // minutes
    int running = 0;   // the month's balance up to this day
};

struct HistoryMonth {
    std::vector<HistoryMonthRow> rows;
    BalanceSummary summary;
    std::string totals_text;  // the line under the table
};

HistoryMonth BuildHistoryMonth(const WorkHistory& history, Date month, Date today);

// The day a row stands for with one cell changed as typed; the day as it was recorded (or an
// empty day that requires nothing) for the other fields.
HistoryDay EditedDay(const WorkHistory& history, Date date, int column, const std::string& text);

}  // namespace vt
