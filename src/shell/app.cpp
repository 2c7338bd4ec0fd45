#include "shell/app.h"

#include <algorithm>
#include <cctype>

#include "agenda/entries.h"
#include "agenda/launching.h"
#include "agenda/text_marks.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/instance_lock.h"
#include "platform/locale_info.h"
#include "shell/main_view.h"
#include "shell/tray_view.h"
#include "store/backups.h"
#include "store/settings_store.h"
#include "workday/clock_ins.h"
#include "workday/workday.h"

namespace vt {

namespace {

// The entry that a key such as "ALA_003" names in the lists as loaded.
const std::string& EntryForKey(const Settings& settings, const std::string& key) {
    const EntryList& list = key.starts_with("ALA_") ? settings.Alarms : settings.Repetitions;
    return list[std::stoi(key.substr(4))];
}

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

App::App(AppPorts ports, MainView& view, TrayView& tray) : ports_(std::move(ports)), view_(view), tray_(tray) {}

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
    state_.TodayHours.clear();
    state_.TodayMode.clear();
    state_.DepartureStage = 0;
    state_.ClockInErrorReported = false;
    state_.StatusText = kAppTitle;
    state_.DepartureLabel.clear();
    tray_.Load();
    state_.StatusText = paths_.ExeBaseName;
    if (!LoadSettings(paths_.SettingsFile(), state_.settings, ports_.dialogs)) {
        return Outcome::Exit;
    }
    ReportUnreadableEntries();
    SettleWorkDate(state_, ports_.clock.Now());
    if (RefreshAfterChange() == Outcome::Exit) {
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
    UpdateDepartureNow();
    CheckDueRepetitions();
    AdvanceTickCounter();
    return Outcome::Continue;
}

Outcome App::RefreshAfterChange() {
    // When the save failed the user has been told, and reading the old file back would throw
    // away the change they just made; memory keeps it for the next save instead.
    if (SaveSettings(paths_, state_.settings, *this, ports_.dialogs) &&
        !LoadSettings(paths_.SettingsFile(), state_.settings, ports_.dialogs)) {
        return Outcome::Exit;
    }
    FillTimeBoxes();
    UpdateDepartureNow();
    RefreshRepetitionMenu();
    // Due alarms become reminders here; the menu is rebuilt with them.
    AdvanceAlarmDates(state_.settings.Alarms, state_.settings.Repetitions, Today(ports_.clock), ports_.dialogs,
                      [this](const std::string& text) { RunLog(text); });
    RefreshRepetitionMenu();
    return Outcome::Continue;
}

void App::RunLog(const std::string& text) {
    AppendRunLog(paths_, ports_.clock, *this, text);
}

void App::ReportUnreadableEntries() {
    const std::vector<std::string> keys = UnreadableEntryKeys(state_.settings);
    if (keys.empty()) {
        return;
    }
    // Each one is named with its entry too: the key alone would not find it again, as every
    // save renumbers the keys.
    std::string text =
        "Estas entradas de la agenda tienen una fecha u hora que no se puede leer. Se conservan tal como están, "
        "pero no aparecerán ni avisarán hasta que se corrijan en el archivo de configuración:\r\n";
    for (const std::string& key : keys) {
        text += "\r\n" + key + "=" + EntryForKey(state_.settings, key);
    }
    ports_.dialogs.Warn(text);
}

void App::RefreshRepetitionMenu() {
    SortRepetitions(state_.settings.Repetitions);
    const EntryList& repetitions = state_.settings.Repetitions;
    view_.ShowRepetitionMenu(std::vector<std::string>(repetitions.begin(), repetitions.end()));
}

void App::CheckDueRepetitions() {
    EntryList& repetitions = state_.settings.Repetitions;
    // Several reminders due at once (after a sleep, say) are shown one after another.
    for (;;) {
        const DateTime now = ports_.clock.Now();
        int due = 0;
        for (int i = FindDueRepetition(repetitions, now); i != 0; i = FindDueRepetition(repetitions, now, i + 1)) {
            state_.RepetitionShowing = true;
            // Another dialog of the program is open: the reminder waits its turn, and the
            // tray keeps blinking meanwhile.
            if (!view_.ModalOpen()) {
                due = i;
                break;
            }
        }
        if (due == 0) {
            return;
        }
        const std::string entry = repetitions[due];
        state_.RepeatTarget = entry;
        const std::string text = GetRepetitionField(entry, 6);
        const RepeatPrompt prompt{
            GetRepetitionField(entry, 7),
            AnniversaryText(text.empty() ? "(Sin mensaje)" : text, static_cast<int>(Today(ports_.clock).year()))};
        tray_.Notify("Repetición", prompt.when + "  " + prompt.text);

        state_.ClockInBoxesActive = false;
        const std::optional<int> choice = view_.AskRepeatLater(prompt);
        state_.ClockInBoxesActive = true;

        state_.RepeatTarget = choice ? RepeatLaterTarget(ports_.clock.Now(), *choice) : std::string();
        // The copy goes in before the due entry goes out, so a reminder is never lost between.
        if (!state_.RepeatTarget.empty()) {
            state_.RepeatTarget = RepeatedEntry(state_.RepeatTarget, entry);
            AppendRepetition(repetitions, state_.RepeatTarget);
        }
        RemoveRepetition(repetitions, due);
        RefreshRepetitionMenu();
        // The dialog may have held up the regular scan.
        if (scan_hook_) {
            scan_hook_();
        }
        SaveSettings(paths_, state_.settings, *this, ports_.dialogs);
        state_.RepetitionShowing = false;
    }
}

void App::FillTimeBoxes() {
    const Settings& s = state_.settings;
    view_.ShowClockIns({s.Entrada1, s.Salida1, s.Entrada2});
    if (state_.TodayMode == "C") {
        view_.SetAfternoonLocked(true);
    } else if (state_.TodayMode == "P") {
        view_.SetAfternoonLocked(false);
    }
}

void App::UpdateDepartureNow() {
    UpdateDeparture(state_, MinutesOfDay(ports_.clock.Now()), ports_.dialogs);
    view_.ShowDeparture(state_.DepartureLabel, state_.StatusText);
}

App::ClockInLeft App::LeaveClockIn(int index, const std::string& text) {
    ClockInLeft result;
    if (!state_.ClockInBoxesActive) {
        return result;
    }
    if (!IsStorableClockIn(text)) {
        result.refocus = true;
        return result;
    }
    if (text != StoredTime(state_.settings, index)) {
        StoreTime(state_.settings, index, text);
        result.outcome = RefreshAfterChange();
    }
    return result;
}

Outcome App::OpenSchedule() {
    // Focus moving into the dialog must not store a half-typed clock-in.
    state_.ClockInBoxesActive = false;
    view_.EditSchedule(state_.settings.DayHours, state_.settings.DayMode);
    // Closed either way, the schedule is saved and applied again (deliberately also after
    // "Cancelar": a continuous day then still loses its afternoon clock-ins).
    SaveSettings(paths_, state_.settings, *this, ports_.dialogs);
    ApplyScheduleToToday(state_, ports_.dialogs);
    const Outcome outcome = RefreshAfterChange();
    state_.ClockInBoxesActive = true;
    return outcome;
}

bool App::CheckClockIns(bool interactive) {
    const Settings& s = state_.settings;
    const auto problem = interactive ? ClockInsProblem(view_.ClockInText(0), view_.ClockInText(1), view_.ClockInText(2))
                                     : ClockInsProblem(s.Entrada1, s.Salida1, s.Entrada2);
    if (problem && interactive) {
        ports_.dialogs.Warn(*problem);
    }
    return !problem;
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
