#include "shell/app.h"

#include <algorithm>
#include <cctype>

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/instance_lock.h"
#include "platform/locale_info.h"
#include "shell/main_view.h"
#include "store/backups.h"
#include "store/settings_store.h"

namespace vt {

namespace {

constexpr const char* kWrongDateFormat =
    "Para que el programa funcione correctamente el formato de la fecha debe ser 'dd/MM/yyyy'.";
constexpr const char* kAlreadyRunning = "VendrakoTimer ya se está ejecutando.";

// The recent-files scan runs when the counter passes minutes-per-hour / 1 * 5 = 300 ticks,
// that is on every 301st tick, about every five minutes.
constexpr int kTicksBetweenScans = 60 / 1 * 5;

}  // namespace

bool CheckDateFormat(const LocaleInfo& locale, Dialogs& dialogs) {
    std::string format = locale.ShortDateFormat();
    std::transform(format.begin(), format.end(), format.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    if (format == "DD/MM/YYYY") {
        return true;
    }
    dialogs.Fatal(kWrongDateFormat);
    return false;
}

App::App(AppPorts ports, MainView& view) : ports_(std::move(ports)), view_(view) {}

Outcome App::Start(std::string_view command_line) {
    // Two copies on one data folder would overwrite each other's saves; the second one leaves
    // before it reads or writes anything.
    if (!ports_.instance_lock.TryAcquire()) {
        ports_.dialogs.Warn(kAlreadyRunning);
        return Outcome::Exit;
    }
    if (!CheckDateFormat(ports_.locale, ports_.dialogs)) {
        return Outcome::Exit;
    }
    paths_ = PathsForExecutable(ports_.executable_path);
    view_.SetCaption(kMainCaption);
    state_.TimerIntervalMs = 1000;
    if (command_line != kDeveloperCommandLine) {
        MirrorLogFolder(paths_, *this);
    }
    state_.StatusText = kAppTitle;
    if (!LoadSettings(paths_.SettingsFile(), state_.settings, ports_.dialogs)) {
        return Outcome::Exit;
    }
    state_.TimerEnabled = true;
    started_ = true;
    return Outcome::Continue;
}

Outcome App::Tick() {
    if (!CheckDateFormat(ports_.locale, ports_.dialogs)) {
        return Outcome::Exit;
    }
    AdvanceTickCounter();
    return Outcome::Continue;
}

void App::AdvanceTickCounter() {
    ++state_.TickCounter;
    if (state_.TickCounter > kTicksBetweenScans) {
        state_.TickCounter = 0;
        if (scan_hook_) {
            scan_hook_();
        }
    }
}

void App::Shutdown([[maybe_unused]] bool interactive) {
    // A start that stopped half-way (wrong date format, unreadable settings) leaves without
    // any backup, so there is nothing to close.
    if (!started_) {
        return;
    }
    started_ = false;  // the closing path runs once, whoever asks for it first
    // Nothing of the closing path asks the user anything yet; the flag is kept so that the
    // desktop's session end (signals) never waits on a message box once one is added.
    MirrorLogFolder(paths_, *this);
}

void App::SetBusy(bool on) {
    view_.SetCaption(on ? kBusyCaption : kMainCaption);
}

}  // namespace vt
