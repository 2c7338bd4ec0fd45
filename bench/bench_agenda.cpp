// The agenda's hot paths: the check for a due reminder (every second), the refresh that
// launches and advances every alarm, and the search of a long-missed daily alarm.
#include <benchmark/benchmark.h>

#include <array>
#include <string>

#include "agenda/entries.h"
#include "agenda/launching.h"
#include "agenda/recurrence.h"
#include "scripted_dialogs.h"

namespace {

const vt::Date kToday = vt::MakeDate(18, 3, 2024);

// The most a settings file holds: 998 repetitions, none due yet.
vt::EntryList FutureRepetitions() {
    vt::EntryList list;
    for (int i = 0; i < 998; ++i) {
        const vt::Date date = vt::AddDays(kToday, 1 + i % 60);
        list.Append(vt::BuildRepetitionEntry(vt::FormatDate(date), vt::FormatTimeOfDay((i * 7) % 1440),
                                             "Recordatorio número " + std::to_string(i) + ", con texto"));
    }
    return list;
}

// 998 alarms with every repeat choice the editor offers; every `due_every`-th one is dated in
// the past (0: none), the rest after today.
vt::EntryList Alarms(int due_every) {
    struct Choice {
        int count;
        const char* unit;
        int notice;
    };
    constexpr std::array<Choice, 9> kChoices{{{0, "D", 14},
                                              {1, "D", 0},
                                              {7, "D", 0},
                                              {1, "M", 7},
                                              {3, "M", 7},
                                              {1, "A", 14},
                                              {2, "A", 14},
                                              {4, "A", 14},
                                              {6, "A", 14}}};
    vt::EntryList list;
    for (int i = 0; i < 998; ++i) {
        const Choice& c = kChoices[static_cast<std::size_t>(i) % kChoices.size()];
        const bool due = due_every > 0 && i % due_every == 0;
        const vt::Date date = vt::AddDays(kToday, due ? -(i % 30) : 1 + i % 300);
        list.Append(vt::BuildAlarmEntry(vt::FormatDate(date), "09:30", c.count, c.unit, c.notice, "0",
                                        "Alarma " + std::to_string(i) + " (1990) <010124>"));
    }
    vt::SortAlarms(list);
    return list;
}

// Target: 50 µs or less (it runs on every tick of the main timer).
void BM_FindDueRepetition_NoneDue(benchmark::State& state) {
    const vt::EntryList repetitions = FutureRepetitions();
    const vt::DateTime now = vt::MakeDateTime(kToday, 12, 0, 30);
    for (auto _ : state) {
        benchmark::DoNotOptimize(vt::FindDueRepetition(repetitions, now));
    }
}
BENCHMARK(BM_FindDueRepetition_NoneDue)->Unit(benchmark::kMicrosecond);

// Target: 5 ms or less for 998 alarms.
void RunAdvance(benchmark::State& state, int due_every) {
    const vt::EntryList stored = Alarms(due_every);
    vt::test::ScriptedDialogs dialogs;
    int lines = 0;
    const vt::RunLog run_log = [&lines](const std::string&) { ++lines; };
    for (auto _ : state) {
        state.PauseTiming();
        vt::EntryList alarms = stored;
        vt::EntryList repetitions;
        state.ResumeTiming();
        vt::AdvanceAlarmDates(alarms, repetitions, kToday, dialogs, run_log);
        benchmark::DoNotOptimize(alarms);
    }
    state.counters["launched_per_run"] = static_cast<double>(lines) / static_cast<double>(state.iterations());
}

void BM_AdvanceAlarmDates_NothingDue(benchmark::State& state) {
    RunAdvance(state, 0);
}
BENCHMARK(BM_AdvanceAlarmDates_NothingDue)->Unit(benchmark::kMicrosecond);

void BM_AdvanceAlarmDates_EveryTenthDue(benchmark::State& state) {
    RunAdvance(state, 10);
}
BENCHMARK(BM_AdvanceAlarmDates_EveryTenthDue)->Unit(benchmark::kMicrosecond);

// Target: 1 ms or less: a daily alarm last stored ten years ago walks day by day to today.
void BM_NextOccurrence_DailyTenYearsBack(benchmark::State& state) {
    vt::test::ScriptedDialogs dialogs;
    for (auto _ : state) {
        vt::Date date = vt::AddYears(kToday, -10);
        benchmark::DoNotOptimize(vt::NextOccurrence(date, 1, "D", kToday, vt::kOpenEnd, 1, true, kToday, dialogs));
    }
}
BENCHMARK(BM_NextOccurrence_DailyTenYearsBack)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
