// The settings file at its largest: 998 alarms and 998 repetitions. Loading happens at start-up
// and after the work-date save; saving after every change of the agenda or the clock-in times,
// so both must stay well below what a user could notice.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

#include "scripted_dialogs.h"
#include "store/busy.h"
#include "store/cp1252.h"
#include "store/ini_file.h"
#include "store/settings_store.h"
#include "temp_app_folder.h"

namespace {

class NoBusy : public vt::Busy {
public:
    void SetBusy(bool) override {}
};

vt::Settings FullSettings() {
    vt::Settings settings;
    settings.WorkDate = "15-03-24";
    settings.Entrada1 = "07:58";
    settings.Salida1 = "14:02";
    settings.Entrada2 = "15:00";
    char entry[128];
    for (int i = 0; i < 998; ++i) {
        std::snprintf(entry, sizeof entry, "%02d/%02d/2024 09:%02d Reuni\u00F3n de equipo;sala %d (1990) <010324>",
                      i % 28 + 1, i % 12 + 1, i % 60, i);
        settings.Alarms.Append(std::string(entry) + ";1;0;2");
        settings.Repetitions.Append(entry);
    }
    settings.UltimoAcceso = vt::MakeDateTime(vt::MakeDate(14, 3, 2024), 18, 5, 0);
    return settings;
}

// Target: at most 2 ms per load (read, decode, parse once, fill 1996 entries).
void BM_LoadSettings(benchmark::State& state) {
    vt::test::TempAppFolder folder;
    folder.WriteFile("VendrakoTimer.ini", vt::Utf8ToCp1252(vt::SettingsFileText(FullSettings())));
    vt::test::ScriptedDialogs dialogs;
    for (auto _ : state) {
        vt::Settings settings;
        const bool loaded = vt::LoadSettings(folder.Path("VendrakoTimer.ini"), settings, dialogs, vt::DateTime{});
        benchmark::DoNotOptimize(loaded);
        benchmark::DoNotOptimize(settings.Alarms.Count());
    }
    if (!dialogs.Shown().empty()) {
        state.SkipWithError("the file did not load cleanly");
    }
}
BENCHMARK(BM_LoadSettings)->Unit(benchmark::kMillisecond);

// Target: at most 5 ms per save, backup copy into the rotating slot included. Both files are
// flushed to disk (fsync) before their rename.
void BM_SaveSettings(benchmark::State& state) {
    vt::test::TempAppFolder folder;
    const vt::Settings settings = FullSettings();
    vt::test::ScriptedDialogs dialogs;
    NoBusy busy;
    vt::SaveSettings(folder.Paths(), settings, busy, dialogs);  // so that every timed save makes a copy
    for (auto _ : state) {
        benchmark::DoNotOptimize(vt::SaveSettings(folder.Paths(), settings, busy, dialogs));
    }
    if (!dialogs.Shown().empty()) {
        state.SkipWithError("a save failed");
    }
}
BENCHMARK(BM_SaveSettings)->Unit(benchmark::kMillisecond);

// No target of its own: the in-memory part of a save (building the text and converting it to
// Windows-1252), to tell it apart from the disk's share of BM_SaveSettings.
void BM_BuildSettingsFile(benchmark::State& state) {
    const vt::Settings settings = FullSettings();
    for (auto _ : state) {
        benchmark::DoNotOptimize(vt::Utf8ToCp1252(vt::SettingsFileText(settings)));
    }
}
BENCHMARK(BM_BuildSettingsFile)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
