// What runs every second for the workday: the departure update of the main tick and the tray
// tick that turns the stage into a picture and a tip.
// Target: 2 µs or less for both together.
#include <benchmark/benchmark.h>

#include "scripted_dialogs.h"
#include "shell/tray_look.h"
#include "store/app_state.h"
#include "workday/workday.h"

namespace {

void BM_DepartureAndTrayTick(benchmark::State& bench) {
    vt::AppState state;
    state.TodayHours = "08:00";
    state.TodayMode = "P";
    state.settings.Entrada1 = "07:58";
    state.settings.Salida1 = "14:00";
    state.settings.Entrada2 = "14:45";
    state.TareaActual = "Revisión del presupuesto trimestral";
    vt::test::ScriptedDialogs dialogs;
    vt::TrayModel tray("VendrakoTimer");
    int minute = 0;
    for (auto _ : bench) {
        vt::UpdateDeparture(state, minute, dialogs);
        tray.Tick(state);
        benchmark::DoNotOptimize(tray.TipField().data());
        minute = (minute + 1) % 1440;
    }
}
BENCHMARK(BM_DepartureAndTrayTick);

}  // namespace

BENCHMARK_MAIN();
