// One tick of the main timer with nothing due: the date-format check and the tick counter.
// Target: 5 µs or less per tick.
#include <benchmark/benchmark.h>

#include "fake_clock.h"
#include "fake_ports.h"
#include "scripted_dialogs.h"
#include "shell/app.h"
#include "temp_app_folder.h"

namespace {

void BM_MainTick(benchmark::State& state) {
    vt::test::TempAppFolder folder;
    vt::test::FakeClock clock;
    vt::test::ScriptedDialogs dialogs;
    vt::test::FakeLocaleInfo locale;
    vt::test::FakeInstanceLock lock;
    vt::test::RecordingMainView view;
    vt::test::RecordingTrayView tray;
    vt::App app({clock, dialogs, locale, lock, folder.ExecutablePath()}, view, tray);
    if (app.Start("DESA") != vt::Outcome::Continue) {
        state.SkipWithError("start-up failed");
        return;
    }
    for (auto _ : state) {
        clock.AdvanceSeconds(1);
        benchmark::DoNotOptimize(app.Tick());
    }
}
BENCHMARK(BM_MainTick);

}  // namespace

BENCHMARK_MAIN();
