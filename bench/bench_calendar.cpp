// The calendar's hot paths with a full agenda (998 alarms and 998 repetitions, the most the
// settings file holds): filling the month grid, which runs after every change to the agenda,
// and building the proximity report.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <string>

#include "agenda/entries.h"
#include "calendar/month_grid.h"
#include "calendar/proximity_report.h"

namespace {

const vt::Date kToday = vt::MakeDate(13, 3, 2024);

// Dates spread over three months around today, so that about half of them fall on the grid;
// some texts carry an anniversary year and a start date, as real ones do.
vt::EntryList FullAlarms() {
    vt::EntryList list;
    for (int i = 0; i < 998; ++i) {
        const vt::Date date = vt::AddDays(kToday, (i * 7) % 90 - 30);
        const std::string text = "Alarma " + std::to_string(i) + (i % 3 == 0 ? " (1990) <010124>" : " texto");
        list.Append(vt::BuildAlarmEntry(vt::FormatDate(date), "09:30", i % 2, "A", 14, i % 10 == 0 ? "1" : "0", text));
    }
    vt::SortAlarms(list);
    return list;
}

vt::EntryList FullRepetitions() {
    vt::EntryList list;
    for (int i = 0; i < 998; ++i) {
        const vt::Date date = vt::AddDays(kToday, (i * 11) % 90 - 30);
        list.Append(vt::BuildRepetitionEntry(vt::FormatDate(date), vt::FormatTimeOfDay((i * 7) % 1440),
                                             "Recordatorio número " + std::to_string(i)));
    }
    return list;
}

// Target: 1 ms or less.
void BM_FillMonthGrid_FullAgenda(benchmark::State& state) {
    const vt::EntryList alarms = FullAlarms();
    const vt::EntryList repetitions = FullRepetitions();
    for (auto _ : state) {
        vt::MonthGrid grid = vt::FillMonthGrid(kToday, kToday, alarms, repetitions);
        benchmark::DoNotOptimize(grid);
    }
    // How much of the agenda lands on the grid, so that the figure is read against real work.
    std::size_t tag_bytes = 0;
    for (const vt::DayCell& cell : vt::FillMonthGrid(kToday, kToday, alarms, repetitions).cells) {
        tag_bytes += cell.tag.size();
    }
    state.counters["tag_bytes"] = static_cast<double>(tag_bytes);
}
BENCHMARK(BM_FillMonthGrid_FullAgenda)->Unit(benchmark::kMicrosecond);

// Target: 1 ms or less.
void BM_ProximityReport_FullAgenda(benchmark::State& state) {
    const vt::EntryList alarms = FullAlarms();
    for (auto _ : state) {
        std::string report = vt::ProximityReport(alarms, kToday);
        benchmark::DoNotOptimize(report);
    }
    const std::string report = vt::ProximityReport(alarms, kToday);
    state.counters["report_lines"] = static_cast<double>(std::count(report.begin(), report.end(), '\n'));
}
BENCHMARK(BM_ProximityReport_FullAgenda)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
