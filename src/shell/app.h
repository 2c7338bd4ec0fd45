#pragma once
#include <functional>
#include <string>
#include <string_view>

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

    // Whether the clock-ins follow each other: the box texts when interactive (the reason is
    // then shown), else the stored values (nothing shown).
    bool CheckClockIns(bool interactive);

    AppState& State() { return state_; }
    const AppState& State() const { return state_; }
    const AppPaths& Paths() const { return paths_; }
    Clock& GetClock() { return ports_.clock; }
    Dialogs& GetDialogs() { return ports_.dialogs; }

    // Called on every 301st tick; the recent-files scan hangs here.
    void SetScanHook(std::function<void()> hook) { scan_hook_ = std::move(hook); }

private:
    void AdvanceTickCounter();
    // Save, load again, show the clock-ins and the departure anew.
    Outcome RefreshAfterChange();
    void FillTimeBoxes();
    void UpdateDepartureNow();
    void ReportUnreadableEntries();
    void RefreshRepetitionMenu();
    // Shows each due reminder in turn and handles the user's answer.
    void CheckDueRepetitions();
    void RunLog(const std::string& text);

    AppPorts ports_;
    MainView& view_;
    TrayView& tray_;
    AppPaths paths_;
    AppState state_;
    std::function<void()> scan_hook_;
    bool started_ = false;
};

}  // namespace vt
