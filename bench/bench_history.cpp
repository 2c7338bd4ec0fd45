// The work history read whole and added up: ten years of days (2,600 working days), then the
// totals of every week, every month and all of it, as the window and `vendrako estado` need.
// Target: 20 ms or less.
#include <benchmark/benchmark.h>

#include "history/work_history.h"

namespace {

std::string TenYears() {
    std::string bytes = std::string(vt::kHistoryHeader) + "\r\n";
    vt::Date d = vt::MakeDate(2, 1, 2015);
    for (int n = 0; n < 2600; d = vt::AddDays(d, 1)) {
        if (vt::WeekdayMonday1(d) > 5) {
            continue;
        }
        const std::string leave = "17:" + std::to_string(10 + n % 50);
        const vt::HistoryDay day{d, "08:00", "14:00", "15:00", leave, "P", "08:00", n % 40 == 0 ? "vacaciones" : ""};
        bytes += vt::HistoryLine(day) + "\r\n";
        ++n;
    }
    return bytes;
}

void BM_ReadTenYearsAndEveryTotal(benchmark::State& bench) {
    const std::string bytes = TenYears();
    const vt::Date today = vt::MakeDate(31, 12, 2025);
    for (auto _ : bench) {
        const vt::WorkHistory history = vt::ParseHistory(bytes);
        int sum = 0;
        const vt::Date first = history.days.front().date;
        const vt::Date last = history.days.back().date;
        for (vt::Date week = vt::WeekStart(first); week <= last; week = vt::AddDays(week, 7)) {
            sum += vt::SumDays(history, week, vt::AddDays(week, 6), today).Balance();
        }
        for (vt::Date month = vt::MonthStart(first); month <= last; month = vt::AddMonths(month, 1)) {
            sum += vt::SumDays(history, month, vt::MonthEnd(month), today).Balance();
        }
        sum += vt::Summarize(history, last, today).all.Balance();
        benchmark::DoNotOptimize(sum);
    }
    bench.SetLabel(std::to_string(bytes.size()) + " bytes");
}
BENCHMARK(BM_ReadTenYearsAndEveryTotal)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
