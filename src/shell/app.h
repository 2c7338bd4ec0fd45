#pragma once
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "calendar/month_grid.h"
#include "history/history_recorder.h"
#include "store/app_paths.h"
#include "store/app_state.h"
#include "store/busy.h"

namespace vt {

class Clock;
class Dialogs;
class LocaleInfo;
class InstanceLock;
class MainView;
class TrayView;
class RecentFiles;
class ShellOpen;
class ShellFolders;
class StartupEntryMaker;
class SettingsReadAhead;

inline constexpr const char* kAppTitle = "VendrakoTimer";
inline constexpr const char* kMainCaption = "VendrakoTimer 3.52";
inline constexpr const char* kBusyCaption = "...procesando...";
inline constexpr const char* kDeveloperCommandLine = "DESA";

// Everything App needs from outside, handed in once.
struct AppPorts {
    Clock& clock;
    Dialogs& dialogs;
    LocaleInfo& locale;
    InstanceLock& instance_lock;
    std::string executable_path;
    // The file-access log's outside world; where one is missing (some tests), its feature
    // does nothing.
    RecentFiles* recent_files = nullptr;
    ShellOpen* shell_open = nullptr;
    ShellFolders* shell_folders = nullptr;
    // How an entry that starts the program with the desktop session is made.
    StartupEntryMaker* startup_entry = nullptr;
    // The settings file as read ahead while the window system started, for the first load.
    SettingsReadAhead* settings_read_ahead = nullptr;
};

// Whether the program goes on after a step, or must end now.
enum class Outcome { Continue, Exit };

// Reads the desktop's short date format and refuses any but "dd/MM/yyyy" (any letter case).
bool CheckDateFormat(const LocaleInfo& locale, Dialogs& dialogs);

// The program's start-up, its one-second main tick and its shutdown, in their fixed orders.
// The windows only draw what App decides and forward the user's actions to it.
class App : public Busy {
public:
    App(AppPorts ports, MainView& view, TrayView& tray);

    Outcome Start(std::string_view command_line);
    Outcome Tick();
    // interactive = false when the desktop session is ending: nothing modal is shown then.
    void Shutdown(bool interactive);
    // The desktop session is ending: every dialog open now closes, no further one is shown,
    // and what an open dialog held (a due reminder, an entry being edited) stays as it is.
    void EndSession();
    bool SessionEnding() const;

    void SetBusy(bool on) override;

    // A clock-in box was left holding this text. Returns whether the focus must go back into
    // the box (a half-typed value) and whether the program goes on.
    struct ClockInLeft {
        bool refocus = false;
        Outcome outcome = Outcome::Continue;
    };
    ClockInLeft LeaveClockIn(int index, const std::string& text);

    // The "Configuración" item: the weekly schedule, then today's hours afresh.
    Outcome OpenSchedule();

    // The agenda's menu items. A preset date of "" leaves the editor's date empty; a day
    // ("dd/mm/yyyy") comes from the calendar.
    void NewAlarm(std::string_view preset_date);       // "Alarmas" → "Nueva", "Añadir Alarma"
    void NewRepetition(std::string_view preset_date);  // "Repeticiones" → "Nueva", "Añadir Repetición"
    void OpenRepetition(int index);                    // one of the listed reminders
    void ShowAllAlarms();                              // "Alarmas" → "Mostrar todas"
    void ExportIcs();                                  // "Alarmas" → "Exportar a iCalendar…"
    void ImportIcs();                                  // "Alarmas" → "Importar de iCalendar…"
    // A calendar day's entry: kind "ALA" or "REP" and its number in its list.
    void OpenDayEntry(std::string_view kind, int index);
    // What the repetitions menu lists, sorted when the reminders last changed.
    std::span<const std::string> RepetitionMenuEntries() const;

    // The month calendar's buttons: navigation (0 "<<", 1 "-", 2 "+", 3 ">>", 4 today), the
    // mouse over a day, a click on a day.
    void MoveCalendar(int button);
    void HoverDay(int cell);
    void ClickDay(int cell);

    // The proximity report (fMostrarInforme): its text, shown in a message box when asked.
    std::string ShowProximityReport(bool show);

    // The tray's "Mostrar aplicación", once the window is back: the calendar returns to today
    // unless the report's message box is open.
    void WindowRestored();

    // Whether the clock-ins follow each other: the box texts when interactive (the reason is
    // then shown), else the stored values (nothing shown).
    bool CheckClockIns(bool interactive);

    AppState& State() { return state_; }
    const AppState& State() const { return state_; }
    const AppPaths& Paths() const { return paths_; }
    Clock& GetClock() { return ports_.clock; }
    Dialogs& GetDialogs() { return ports_.dialogs; }

    // Told of every recent-files scan, after it ran (tests count them here).
    void SetScanHook(std::function<void()> hook) { scan_hook_ = std::move(hook); }

    // "Crear calendario": HTML month pages for a range; "Listado por fechas": Listado.txt.
    void CreateCalendars();
    void ListDates();

    // "Ayuda": the help page; "Arrancar al iniciar Windows": start with the desktop session;
    // the tray's "About" item.
    void ShowHelp();
    void StartWithSystem();
    void ShowTrayAbout();
    ShellOpen* GetShellOpen() { return ports_.shell_open; }

    // "Tareas" / "TAREAS": marks the task worked on; "Resumen de tareas": the day's summary.
    void MarkTask();
    void ShowTaskSummary();

    // The "Accesos" items: today's access page, the folder of the pages, the recent files.
    void OpenTodaysAccessLog();
    void OpenAccessLogFolder();
    void OpenRecentFilesFolder();

    // "Histórico de jornadas…": asks for the end of the days left open, then shows the history.
    void OpenHistory();
    HistoryRecorder& History() { return history_; }

private:
    void AdvanceTickCounter();
    // Saves the settings, remembering failures in State().Store; a save that did not reach the
    // disk is tried again from the tick.
    bool Save(SettingsReadAhead* read_back = nullptr);
    void RetryPendingSave();
    // Save, load again, show the clock-ins and the departure anew.
    Outcome RefreshAfterChange();
    void FillTimeBoxes();
    void UpdateDepartureNow();
    void ReportUnreadableEntries();
    void RefreshRepetitionMenu();
    // Due alarms become reminders and every alarm moves to its next date; when the reminders
    // are full, the user is told once.
    void LaunchAlarms();
    // Shows each due reminder in turn and handles the user's answer.
    void CheckDueRepetitions();
    void RunLog(const std::string& text);
    void RunRecentFilesScan();
    void OpenAlarm(bool add_mode, int index, std::string_view preset_date);
    void OpenRepetitionEditorFor(bool add_mode, int index, std::string_view preset_date);
    void AfterAlarmChange();
    void AfterRepetitionChange();
    void RefreshCalendar();

    AppPorts ports_;
    MainView& view_;
    TrayView& tray_;
    AppPaths paths_;
    AppState state_;
    std::function<void()> scan_hook_;
    bool started_ = false;
    // The recent-files scan shows its work with the hourglass pointer, not the caption.
    class BusyPointer : public Busy {
    public:
        explicit BusyPointer(MainView& view) : view_(view) {}
        void SetBusy(bool on) override;

    private:
        MainView& view_;
    };
    BusyPointer busy_pointer_{view_};
    MonthGrid grid_;
    HistoryRecorder history_{state_, ports_.clock, ports_.dialogs};
};

}  // namespace vt
