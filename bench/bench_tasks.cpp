// The task summary over a heavy day (2,000 task lines of today; target 50 ms or less) and the
// drop-down list of the mark-task dialog over a long log (10,000 lines; target 100 ms or less),
// both read from the file as the program reads them.
#include <benchmark/benchmark.h>

#include <string>

#include "fake_clock.h"
#include "tasks/mark_task.h"
#include "tasks/task_log.h"
#include "tasks/task_summary.h"
#include "temp_app_folder.h"

namespace {

const vt::DateTime kNow = vt::MakeDateTime(vt::MakeDate(2, 1, 2024), 23, 59, 0);

// Lines from 00:00:00 on, `step` seconds apart, ending on the fake clock's day; 300 task names
// in mixed case so that the list's ignoring-case check has work to do.
std::string LogOf(int lines, int step) {
    std::string log;
    const vt::DateTime first = kNow - std::chrono::seconds{static_cast<long long>(lines) * step};
    for (int i = 0; i < lines; ++i) {
        const int task = (i * 7919) % 300;
        log += vt::FormatDateTime(first + std::chrono::seconds{static_cast<long long>(i) * step}) + " " +
               (task % 2 == 0 ? "Expediente " : "EXPEDIENTE ") + std::to_string(task) + "\r\n";
    }
    return log;
}

void SummaryOf2000TasksToday(benchmark::State& state) {
    vt::test::TempAppFolder folder;
    // 2,000 lines 20 s apart: all of them today, after the 08:00 entry, none of 10 hours.
    folder.WriteFile("LOG/TAREAS.LOG", LogOf(2000, 20));
    vt::test::FakeClock clock(kNow);
    for (auto _ : state) {
        const vt::MessageBox box = vt::ResumenTareas(folder.Paths(), clock, {"08:00", "14:00", "15:00"});
        benchmark::DoNotOptimize(box.text.data());
    }
}
BENCHMARK(SummaryOf2000TasksToday)->Unit(benchmark::kMillisecond);

void TaskListOver10000Lines(benchmark::State& state) {
    vt::test::TempAppFolder folder;
    folder.WriteFile("LOG/TAREAS.LOG", LogOf(10000, 60));
    const auto order = state.range(0) == 0 ? vt::TaskOrder::LastUse : vt::TaskOrder::ByName;
    for (auto _ : state) {
        // As the dialog opens: the list and the editor's text from one reading each.
        const auto items = vt::TaskListItems(vt::ReadTaskLog(folder.Paths()), order);
        const auto text = vt::LogEditorText(vt::ReadTaskLog(folder.Paths()));
        benchmark::DoNotOptimize(items.data());
        benchmark::DoNotOptimize(text.data());
    }
}
BENCHMARK(TaskListOver10000Lines)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
