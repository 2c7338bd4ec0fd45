#pragma once
#include <array>
#include <cstdint>
#include <string>

#include "store/dates.h"
#include "store/entry_list.h"

namespace vt {

// What the settings file holds, in memory.
struct Settings {
    std::string WorkDate;  // "dd-mm-yy"
    std::string Entrada1;  // "hh:mm" or empty
    std::string Salida1;
    std::string Entrada2;
    // Monday = 1 .. Sunday = 7; slot 0 unused.
    std::array<std::string, 8> DayHours{"", "08:00", "08:00", "08:00", "08:00", "08:00", "08:00", "08:00"};
    std::array<std::string, 8> DayMode{"", "C", "C", "C", "C", "C", "C", "C"};
    EntryList Repetitions;
    EntryList Alarms;
    DateTime UltimoAcceso = NeverScanned();

    friend bool operator==(const Settings&, const Settings&) = default;
};

// What the saves and the run log remember from one call to the next during a run.
struct StoreStatus {
    // Backups or run-log lines that cannot be written are told once per run of the program: it
    // goes on without them, and a message at every save or line would only be clicked away.
    bool BackupFailureTold = false;
    bool RunLogFailureTold = false;
    // The last save did not reach the disk: memory holds changes the file lacks, and the save is
    // tried again until one gets through. Its failure is told once, not at every retry.
    bool SavePending = false;
    // While a save is pending, the file that the failed attempt already copied to a backup
    // slot: retries do not copy the same old version again, which would rotate every older copy
    // out of the slots.
    std::string CopiedWhilePending;
};

// The program's one state: the settings and the values that live only while it runs.
// App owns it; everything else receives it by reference.
struct AppState {
    Settings settings;
    StoreStatus Store;

    std::string TodayHours;
    std::string TodayMode;
    int DepartureStage = 0;
    std::string DepartureLabel;  // the "Salida:" label's caption
    bool ClockInErrorReported = false;
    // Raised while due alarms wait for room in a full list of repetitions, once the user has
    // been told; every reminder that leaves the list then lets them try again.
    bool RemindersFullReported = false;
    // Cleared while a dialog is open over the main window, so that focus moving into it does
    // not store a half-typed clock-in.
    bool ClockInBoxesActive = true;
    bool RepetitionShowing = false;
    std::string RepeatTarget;
    std::string TareaActual;
    std::string StatusText;

    // Counts main-timer ticks up to the next recent-files scan; 16 bits like the original
    // counter, which the scan rule relies on never overflowing.
    // The date the month calendar is set to; today at start-up.
    Date CalendarDate{};
    // Raised while the proximity report's message box is open: bringing the window back from
    // the tray then leaves the calendar where it is.
    bool ReportShowing = false;

    std::int16_t TickCounter = 0;
    // Ticks since the last try of a save that did not reach the disk.
    int SaveRetryTicks = 0;
    int TimerIntervalMs = 0;
    bool TimerEnabled = false;
};

}  // namespace vt
