// Saves the settings over and over, for the crash-safety test that kills it at random moments.
//
//   save_loop <folder> <base name> [first] [saves]
//
// Saves alternate between two settings that differ only in their alarm count, 300 for even save
// numbers and 301 for odd ones, so every file tells which save wrote it. Numbering starts at
// first (0 when not given), so a run that is killed during its first save still replaces the
// other content. Each save is followed by one run-log line. With no count of saves, or 0, it
// runs until it is killed. Once set up it writes one byte to standard output, so the
// test starts its timer only when the loop is running.

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "fake_clock.h"
#include "history/history_recorder.h"
#include "recording_busy.h"
#include "scripted_dialogs.h"
#include "store/app_paths.h"
#include "store/app_state.h"
#include "store/backups.h"
#include "store/settings_store.h"

namespace {

vt::Settings SettingsWithAlarms(int count) {
    vt::Settings s;
    s.WorkDate = "02-01-24";
    s.Entrada1 = "08:05";
    s.Salida1 = "13:30";
    s.Entrada2 = "14:15";
    s.DayHours[5] = "07:00";
    s.DayMode[6] = "L";
    s.Repetitions.Append("REP> 02/01/2024 09:00 Llamar a Jos\u00E9;0;0;0");
    for (int i = 1; i <= count; ++i) {
        const int day = 1 + i % 28;
        s.Alarms.Append((day < 10 ? "0" : "") + std::to_string(day) + "/03/2024 10:00 Cita m\u00E9dica n\u00BA " +
                        std::to_string(i) + ";0;0;0");
    }
    return s;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3 || argc > 5) {
        std::fprintf(stderr, "usage: save_loop <folder> <base name> [first] [saves]\n");
        return 2;
    }
    vt::AppPaths paths;
    paths.AppFolder = argv[1];
    if (paths.AppFolder.empty() || paths.AppFolder.back() != '/') {
        paths.AppFolder += '/';
    }
    paths.ExeBaseName = argv[2];
    const unsigned long first = argc >= 4 ? std::strtoul(argv[3], nullptr, 10) : 0;
    const unsigned long saves = argc == 5 ? std::strtoul(argv[4], nullptr, 10) : 0;

    const vt::Settings values[2] = {SettingsWithAlarms(300), SettingsWithAlarms(301)};
    vt::test::FakeClock clock;
    vt::test::ScriptedDialogs dialogs;
    vt::test::RecordingBusy busy;
    vt::StoreStatus status;

    // Each save also records a working day in the history, numbered like the save from
    // 01/01/2024; every eighth is then corrected by hand, which rewrites the whole file.
    vt::AppState day_state;
    vt::test::FakeClock day_clock;
    vt::HistoryRecorder history(day_state, day_clock, dialogs);
    history.StartDay(paths.AppFolder + vt::kHistoryFileName);

    const char ready = 'r';
    if (write(STDOUT_FILENO, &ready, 1) != 1) {
        return 3;
    }
    for (unsigned long n = first; saves == 0 || n - first < saves; ++n) {
        const vt::Settings& settings = values[n % 2];
        if (!vt::SaveSettings(paths, settings, busy, dialogs)) {
            std::fprintf(stderr, "save %lu failed\n", n);
            return 1;
        }
        const vt::Date day = vt::AddDays(vt::MakeDate(1, 1, 2024), static_cast<int>(n % 3000));
        day_state.settings.WorkDate = vt::FormatWorkDate(day);
        day_state.settings.Entrada1 = "08:00";
        day_state.TodayHours = "08:00";
        day_state.TodayMode = "C";
        day_clock.Set(vt::MakeDateTime(day, 17, 0));
        history.RecordLeaving();
        if (n % 8 == 0) {
            vt::HistoryDay corrected = *history.History().Find(day);
            corrected.salida = "16:30";
            if (history.Edit(corrected)) {
                std::fprintf(stderr, "history edit %lu failed\n", n);
                return 1;
            }
        }
        clock.AdvanceSeconds(1);
        vt::AppendRunLog(
            paths, clock, busy, dialogs, status,
            "Guardado n\u00BA " + std::to_string(n) + " con " + std::to_string(settings.Alarms.Count()) + " alarmas");
        busy.calls.clear();
    }
    return 0;
}
