#include "shell/app.h"

#include <algorithm>
#include <cctype>

#include "accesslog/access_pages.h"
#include "accesslog/recent_scan.h"
#include "agenda/alarm_editor.h"
#include "agenda/entries.h"
#include "agenda/launching.h"
#include "agenda/repetition_editor.h"
#include "agenda/text_marks.h"
#include "calendar/date_listing.h"
#include "calendar/day_menu.h"
#include "calendar/html_calendar.h"
#include "calendar/proximity_report.h"
#include "extras/autostart.h"
#include "extras/help_page.h"
#include "ical/agenda_exchange.h"
#include "ical/ics_common.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/instance_lock.h"
#include "platform/locale_info.h"
#include "shell/main_view.h"
#include "shell/tray_view.h"
#include "store/backups.h"
#include "store/settings_read_ahead.h"
#include "store/settings_store.h"
#include "tasks/task_log.h"
#include "tasks/task_summary.h"
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
constexpr int kTicksBetweenSaveRetries = 60;

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
    state_.RemindersFullReported = false;
    state_.StatusText = kAppTitle;
    state_.DepartureLabel.clear();
    state_.TareaActual = UltimaTareaDeHoy(paths_, ports_.clock);
    tray_.Load();
    state_.StatusText = paths_.ExeBaseName;
    if (!LoadSettings(paths_.SettingsFile(), state_.settings, ports_.dialogs, ports_.clock.Now(),
                      ports_.settings_read_ahead)) {
        return Outcome::Exit;
    }
    // The history closes the last work day before the work date moves on to today.
    history_.StartDay(paths_.AppFolder + kHistoryFileName);
    SettleWorkDate(state_, ports_.clock.Now());
    // After the work date is settled: a clock-in that a new day replaces is not worth naming.
    ReportUnreadableEntries();
    if (RefreshAfterChange() == Outcome::Exit) {
        return Outcome::Exit;
    }
    state_.CalendarDate = Today(ports_.clock);
    RefreshCalendar();
    view_.HideDetails();
    // From here on there is something for the closing path to close.
    started_ = true;
    ShowProximityReport(true);
    // The session ended while the start-up boxes were open: the closing path takes over.
    if (SessionEnding()) {
        return Outcome::Continue;
    }
    state_.TickCounter = 0;
    RunRecentFilesScan();
    state_.TimerEnabled = true;
    return Outcome::Continue;
}

Outcome App::Tick() {
    if (!CheckDateFormat(ports_.locale, ports_.dialogs)) {
        return Outcome::Exit;
    }
    UpdateDepartureNow();
    CheckDueRepetitions();
    if (!SessionEnding()) {
        AdvanceTickCounter();
        RetryPendingSave();
    }
    return Outcome::Continue;
}

bool App::Save(SettingsReadAhead* read_back) {
    return SaveSettings(paths_, state_.settings, *this, ports_.dialogs, state_.Store, read_back);
}

void App::RetryPendingSave() {
    // Once a minute rather than every second: each try writes the whole file, and a full disk
    // rarely frees up within seconds. A new change tries at once anyway.
    if (!state_.Store.SavePending) {
        state_.SaveRetryTicks = 0;
    } else if (++state_.SaveRetryTicks >= kTicksBetweenSaveRetries) {
        state_.SaveRetryTicks = 0;
        Save();
    }
}

Outcome App::RefreshAfterChange() {
    // When the save failed the user has been told, and reading the old file back would throw
    // away the change they just made; memory keeps it for the next save instead.
    SettingsReadAhead read_back;
    if (Save(&read_back) &&
        !LoadSettings(paths_.SettingsFile(), state_.settings, ports_.dialogs, ports_.clock.Now(), &read_back)) {
        return Outcome::Exit;
    }
    history_.RecordClockIns();
    FillTimeBoxes();
    UpdateDepartureNow();
    RefreshRepetitionMenu();
    // Due alarms become reminders here; the menu is rebuilt with them.
    LaunchAlarms();
    RefreshRepetitionMenu();
    // Before start-up has set the calendar's date there is no calendar to refresh yet.
    if (state_.CalendarDate.ok()) {
        RefreshCalendar();
    }
    return Outcome::Continue;
}

void App::RunRecentFilesScan() {
    if (ports_.recent_files != nullptr) {
        TratarArchivosRecientes(paths_, state_.settings, ports_.clock, ports_.dialogs, busy_pointer_,
                                *ports_.recent_files);
    }
    if (scan_hook_) {
        scan_hook_();
    }
}

void App::CreateCalendars() {
    state_.ClockInBoxesActive = false;
    // The pages are written under the hourglass pointer.
    vt::CreateCalendars(ports_.dialogs, busy_pointer_, paths_.AppFolder, Today(ports_.clock), state_.settings.Alarms,
                        state_.settings.Repetitions);
    state_.ClockInBoxesActive = true;
}

void App::ListDates() {
    if (ports_.shell_open == nullptr) {
        return;
    }
    state_.ClockInBoxesActive = false;
    vt::ListDates(ports_.dialogs, *ports_.shell_open, paths_.AppFolder, Today(ports_.clock), state_.settings.Alarms,
                  state_.settings.Repetitions);
    state_.ClockInBoxesActive = true;
}

void App::ShowHelp() {
    if (ports_.shell_open != nullptr) {
        GenerarAyuda(paths_, *ports_.shell_open, ports_.dialogs);
    }
}

void App::StartWithSystem() {
    if (ports_.shell_folders != nullptr && ports_.startup_entry != nullptr) {
        CrearAccesoInicio(paths_, ports_.dialogs, *ports_.shell_folders, *ports_.startup_entry);
    }
}

void App::ShowTrayAbout() {
    // The tray's own "About" has only ever said this; the real About box is in the main menu.
    ports_.dialogs.Show({"About code goes here.", MsgIcon::Information, MsgButtons::Ok, "About", {}});
}

void App::MarkTask() {
    state_.ClockInBoxesActive = false;
    // The tray's tip follows at its next tick.
    if (const std::optional<std::string> task = view_.MarkTask()) {
        state_.TareaActual = *task;
    }
    state_.ClockInBoxesActive = true;
}

void App::ShowTaskSummary() {
    // The boxes as they stand: a half-typed time is caught by the summary's own check.
    ports_.dialogs.Show(
        ResumenTareas(paths_, ports_.clock, {view_.ClockInText(0), view_.ClockInText(1), view_.ClockInText(2)}));
}

void App::OpenTodaysAccessLog() {
    if (ports_.shell_open != nullptr) {
        AbrirLogDeHoy(paths_, ports_.clock, ports_.dialogs, *ports_.shell_open);
    }
}

void App::OpenAccessLogFolder() {
    if (ports_.shell_open != nullptr) {
        AbrirCarpetaLogs(paths_, ports_.clock, *ports_.shell_open);
    }
}

void App::OpenRecentFilesFolder() {
    if (ports_.shell_open != nullptr && ports_.shell_folders != nullptr) {
        AbrirCarpetaRecientes(paths_, *ports_.shell_folders, *ports_.shell_open, ports_.dialogs);
    }
}

void App::OpenHistory() {
    state_.ClockInBoxesActive = false;
    history_.AskToCompleteOpenDays();
    view_.ShowHistory(history_);
    state_.ClockInBoxesActive = true;
}

void App::NewAlarm(std::string_view preset_date) {
    OpenAlarm(true, 0, preset_date);
}

void App::NewRepetition(std::string_view preset_date) {
    OpenRepetitionEditorFor(true, 0, preset_date);
}

void App::OpenRepetition(int index) {
    OpenRepetitionEditorFor(false, index, kNoPresetDate);
}

void App::ShowAllAlarms() {
    state_.ClockInBoxesActive = false;
    if (const int index = view_.ChooseAlarm(state_.settings.Alarms); index != 0) {
        OpenAlarm(false, index, kNoPresetDate);
    }
    state_.ClockInBoxesActive = true;
}

void App::ExportIcs() {
    state_.ClockInBoxesActive = false;
    AgendaExchange(
        state_, ports_.clock, ports_.dialogs, view_, [this](const std::string& text) { RunLog(text); },
        SystemTimeZoneName())
        .Export();
    state_.ClockInBoxesActive = true;
}

void App::ImportIcs() {
    state_.ClockInBoxesActive = false;
    if (AgendaExchange(
            state_, ports_.clock, ports_.dialogs, view_, [this](const std::string& text) { RunLog(text); },
            SystemTimeZoneName())
            .Import()) {
        AfterAlarmChange();
    }
    state_.ClockInBoxesActive = true;
}

void App::OpenDayEntry(std::string_view kind, int index) {
    if (kind == "REP") {
        OpenRepetitionEditorFor(false, index, kNoPresetDate);
    } else if (kind == "ALA") {
        OpenAlarm(false, index, kNoPresetDate);
    } else {
        ports_.dialogs.Warn("Algo va mal");
    }
}

void App::OpenAlarm(bool add_mode, int index, std::string_view preset_date) {
    // Focus moving into the editor must not store a half-typed clock-in.
    state_.ClockInBoxesActive = false;
    // A full list is refused before the editor opens, so that nothing typed is thrown away.
    if (!add_mode || RoomForOneMore(state_.settings.Alarms, kAlarmsFullMessage, ports_.dialogs)) {
        const bool changed = OpenAlarmEditor(
            state_.settings.Alarms, add_mode, index, preset_date, ports_.clock.Now(),
            [this](const std::string& text) { RunLog(text); },
            [this](AlarmForm& form) { return view_.EditAlarm(form); });
        if (changed && !SessionEnding()) {
            AfterAlarmChange();
        }
    }
    state_.ClockInBoxesActive = true;
}

void App::OpenRepetitionEditorFor(bool add_mode, int index, std::string_view preset_date) {
    state_.ClockInBoxesActive = false;
    if (!add_mode || RoomForOneMore(state_.settings.Repetitions, kRepetitionsFullMessage, ports_.dialogs)) {
        const bool changed =
            OpenRepetitionEditor(state_.settings.Repetitions, add_mode, index, preset_date, ports_.clock.Now(),
                                 [this](RepetitionForm& form) { return view_.EditRepetition(form); });
        if (changed && !SessionEnding()) {
            AfterRepetitionChange();
        }
    }
    state_.ClockInBoxesActive = true;
}

void App::AfterAlarmChange() {
    // An alarm saved for today becomes a reminder at once.
    LaunchAlarms();
    RefreshRepetitionMenu();
    RefreshCalendar();
    Save();
    RunRecentFilesScan();
}

void App::AfterRepetitionChange() {
    // A deleted reminder may make room for a waiting alarm.
    if (state_.RemindersFullReported) {
        LaunchAlarms();
    }
    RefreshRepetitionMenu();
    RefreshCalendar();
    Save();
    RunRecentFilesScan();
}

void App::RefreshCalendar() {
    grid_ =
        FillMonthGrid(state_.CalendarDate, Today(ports_.clock), state_.settings.Alarms, state_.settings.Repetitions);
    state_.CalendarDate = grid_.displayed;
    view_.ShowMonthGrid(grid_);
}

void App::MoveCalendar(int button) {
    state_.CalendarDate = MoveDisplayedDate(state_.CalendarDate, Today(ports_.clock), button);
    RefreshCalendar();
    view_.FocusAway();
}

void App::HoverDay(int cell) {
    const std::string& tag = grid_.cells.at(static_cast<size_t>(cell)).tag;
    if (tag.empty()) {
        view_.HideDetails();
    } else {
        view_.ShowDetails(tag);
    }
}

void App::ClickDay(int cell) {
    view_.HideDetails();
    view_.FocusAway();
    const Date day = grid_.cells.at(static_cast<size_t>(cell)).date;
    const DayMenu menu = BuildDayMenu(day, state_.settings.Alarms, state_.settings.Repetitions);
    const std::optional<DayMenuChoice> choice = view_.PopUpDayMenu(menu);
    if (!choice) {
        return;
    }
    switch (choice->kind) {
        case DayMenuChoice::Kind::AddRepetition:
            NewRepetition(FormatDate(day));
            break;
        case DayMenuChoice::Kind::AddAlarm:
            NewAlarm(FormatDate(day));
            break;
        case DayMenuChoice::Kind::Detail: {
            const DayMenuRow& row = menu.rows.at(static_cast<size_t>(choice->row - 1));
            OpenDayEntry(row.kind, row.index);
            break;
        }
        case DayMenuChoice::Kind::DateItem:
            break;
    }
}

std::string App::ShowProximityReport(bool show) {
    const std::string text = ProximityReport(state_.settings.Alarms, Today(ports_.clock));
    if (show) {
        state_.ReportShowing = true;
        ports_.dialogs.Inform(text);
        state_.ReportShowing = false;
    }
    return text;
}

void App::WindowRestored() {
    if (!state_.ReportShowing) {
        MoveCalendar(4);
    }
}

void App::RunLog(const std::string& text) {
    AppendRunLog(paths_, ports_.clock, *this, ports_.dialogs, state_.Store, text);
}

void App::ReportUnreadableEntries() {
    const std::vector<std::string> keys = UnreadableEntryKeys(state_.settings);
    const std::vector<std::string> clock_ins = UnreadableClockIns(state_.settings);
    if (keys.empty() && clock_ins.empty()) {
        return;
    }
    // Each one is named with its entry too: the key alone would not find it again, as every
    // save renumbers the keys.
    std::string text;
    if (!keys.empty()) {
        text =
            "Estas entradas de la agenda tienen una fecha u hora que no se puede leer. Se conservan tal como están, "
            "pero no aparecerán ni avisarán hasta que se corrijan en el archivo de configuración:\r\n";
        for (const std::string& key : keys) {
            text += "\r\n" + key + "=" + EntryForKey(state_.settings, key);
        }
    }
    // All in one box: start-up shows enough boxes already.
    if (!clock_ins.empty()) {
        text += text.empty() ? "" : "\r\n\r\n";
        text += "Estos fichajes tienen una hora que no se puede leer. Corrígelos en la ventana principal:\r\n";
        for (const std::string& clock_in : clock_ins) {
            text += "\r\n" + clock_in;
        }
    }
    ports_.dialogs.Warn(text);
}

void App::LaunchAlarms() {
    const int held = AdvanceAlarmDates(state_.settings.Alarms, state_.settings.Repetitions, Today(ports_.clock),
                                       ports_.dialogs, [this](const std::string& text) { RunLog(text); });
    if (held > 0 && !state_.RemindersFullReported) {
        ports_.dialogs.Warn(kRemindersFullMessage);
    }
    state_.RemindersFullReported = held > 0;
}

void App::RefreshRepetitionMenu() {
    SortRepetitions(state_.settings.Repetitions);
    view_.RepetitionMenuChanged();
}

std::span<const std::string> App::RepetitionMenuEntries() const {
    const EntryList& repetitions = state_.settings.Repetitions;
    return {repetitions.begin(), repetitions.end()};
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
        // Closed by the end of the session, not by the user: the reminder stays as it is, to
        // come up again at the next start.
        if (SessionEnding()) {
            return;
        }

        state_.RepeatTarget = choice ? RepeatLaterTarget(ports_.clock.Now(), *choice) : std::string();
        // The copy goes in before the due entry goes out, so a reminder is never lost between.
        if (!state_.RepeatTarget.empty()) {
            state_.RepeatTarget = RepeatedEntry(state_.RepeatTarget, entry);
            AppendRepetition(repetitions, state_.RepeatTarget);
        }
        RemoveRepetition(repetitions, due);
        // The place it leaves goes to an alarm waiting for room, which is then due at once.
        if (state_.RemindersFullReported) {
            LaunchAlarms();
        }
        RefreshRepetitionMenu();
        RefreshCalendar();
        // The dialog may have held up the regular scan.
        RunRecentFilesScan();
        Save();
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
    if (SessionEnding()) {
        state_.ClockInBoxesActive = true;
        return Outcome::Continue;
    }
    // Closed either way, the schedule is saved and applied again (deliberately also after
    // "Cancelar": a continuous day then still loses its afternoon clock-ins).
    Save();
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
        RunRecentFilesScan();
    }
}

void App::Shutdown(bool interactive) {
    // A start that stopped half-way (wrong date format, unreadable settings) leaves without
    // any backup, so there is nothing to close.
    if (!started_) {
        return;
    }
    started_ = false;  // the closing path runs once, whoever asks for it first
    // When the desktop session is ending nothing may wait for the user, not even a warning.
    if (!interactive) {
        EndSession();
    }
    // Every change is saved when it is made; only one that has not reached the disk yet gets a
    // last try here.
    if (state_.Store.SavePending && !Save() && interactive) {
        ports_.dialogs.Warn("Los \u00FAltimos cambios no se han podido guardar en:\r\n" + paths_.SettingsFile() +
                            "\r\n\r\nSe perder\u00E1n al cerrar el programa.");
    }
    history_.RecordLeaving();
    RunRecentFilesScan();
    const std::string report = ShowProximityReport(false);
    MirrorLogFolder(paths_, *this);
    if (interactive) {
        ports_.dialogs.Inform(report);
    }
}

void App::EndSession() {
    ports_.dialogs.EndSession();
}

bool App::SessionEnding() const {
    return ports_.dialogs.SessionEnding();
}

void App::BusyPointer::SetBusy(bool on) {
    view_.SetBusyPointer(on);
}

void App::SetBusy(bool on) {
    view_.SetCaption(on ? kBusyCaption : kMainCaption);
}

}  // namespace vt
