// Saves the settings over and over, for the crash-safety test that kills it at random moments.
//
//   save_loop <folder ending in /> <base name> <first> <saves>
//
// Saves alternate between two settings that differ only in their alarm count, 300 for even save
// numbers and 301 for odd ones, so every file tells which save wrote it. Numbering starts at
// first, so a run that is killed during its first save still replaces the other content. Each
// save is followed by one run-log line. With 0 saves it runs until it is killed. Once set up it
// writes one byte to standard output, so the test starts its timer only when the loop is running.

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "fake_clock.h"
#include "history/history_recorder.h"
#include "recording_busy.h"
#include "scripted_dialogs.h"
#include "store/backups.h"
#include "store/settings_store.h"

int main(int argc, char** argv) {
    if (argc != 5) {
        std::fprintf(stderr, "usage: save_loop <folder ending in /> <base name> <first> <saves>\n");
        return 2;
    }
    const vt::AppPaths paths{.AppFolder = argv[1], .ExeBaseName = argv[2]};
    const unsigned long first = std::strtoul(argv[3], nullptr, 10);
    const unsigned long saves = std::strtoul(argv[4], nullptr, 10);
    // The settings of even saves, and of odd ones: the same with one alarm more.
    vt::Settings values[2];
    values[0].WorkDate = "02-01-24";
    values[0].Entrada1 = "08:05";
    values[0].Salida1 = "13:30";
    values[0].Entrada2 = "14:15";
    values[0].DayHours[5] = "07:00";
    values[0].DayMode[6] = "L";
    values[0].Repetitions.Append("REP> 02/01/2024 09:00 Llamar a Jos\u00E9;0;0;0");
    for (int i = 1; i <= 300; ++i) {
        char day[3];
        std::snprintf(day, sizeof day, "%02d", 1 + i % 28);
        values[0].Alarms.Append(day + ("/03/2024 10:00 Cita m\u00E9dica n\u00BA " + std::to_string(i)) + ";0;0;0");
    }
    values[1] = values[0];
    values[1].Alarms.Append("22/03/2024 10:00 Cita m\u00E9dica n\u00BA 301;0;0;0");
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

    if (write(STDOUT_FILENO, "r", 1) != 1) {
        return 3;
    }
    for (unsigned long n = first; saves == 0 || n - first < saves; ++n) {
        const vt::Settings& settings = values[n % 2];
        const vt::Date day = vt::AddDays(vt::MakeDate(1, 1, 2024), static_cast<int>(n % 3000));
        day_state.settings.WorkDate = vt::FormatWorkDate(day);
        day_state.settings.Entrada1 = day_state.TodayHours = "08:00";
        day_state.TodayMode = "C";
        day_clock.Set(vt::MakeDateTime(day, 17, 0));
        if (!vt::SaveSettings(paths, settings, busy, dialogs)) {
            std::fprintf(stderr, "save %lu failed\n", n);
            return 1;
        }
        history.RecordLeaving();
        vt::HistoryDay corrected = *history.History().Find(day);
        corrected.salida = "16:30";
        if (n % 8 == 0 && history.Edit(corrected)) {
            std::fprintf(stderr, "history edit %lu failed\n", n);
            return 1;
        }
        clock.AdvanceSeconds(1);
        vt::AppendRunLog(
            paths, clock, busy, dialogs, status,
            "Guardado n\u00BA " + std::to_string(n) + " con " + std::to_string(settings.Alarms.Count()) + " alarmas");
        busy.calls.clear();
    }
    return 0;
}
