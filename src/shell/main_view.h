#pragma once
#include <array>
#include <optional>
#include <string>
#include <vector>

namespace vt {

class EntryList;
struct MonthGrid;
struct DayMenu;
struct DayMenuChoice;
class HistoryRecorder;
struct AlarmForm;
struct RepetitionForm;
enum class EditorAction;

// What the repeat-later dialog shows of a due reminder.
struct RepeatPrompt {
    std::string when;  // "dd/mm/yyyy hh:mm"
    std::string text;  // "(Sin mensaje)" for an empty text; anniversary years worked out
};

// What App asks of the main window and of the dialogs it opens.
class MainView {
public:
    virtual ~MainView() = default;
    virtual void SetCaption(const std::string& caption) = 0;
    // The hourglass pointer over the program's windows while the recent-files scan runs.
    virtual void SetBusyPointer(bool on) = 0;

    // The three clock-in boxes ("Entrada 1", "Salida 1", "Entrada 2"): their texts and the
    // values they go back to on Escape.
    virtual void ShowClockIns(const std::array<std::string, 3>& times) = 0;
    // A continuous day has no afternoon: its two boxes are locked (read-only, out of the Tab
    // order, greyed); a split day unlocks them.
    virtual void SetAfternoonLocked(bool locked) = 0;
    // What a clock-in box holds right now, typed or not.
    virtual std::string ClockInText(int index) const = 0;
    // The departure label and the status line.
    virtual void ShowDeparture(const std::string& label, const std::string& status) = 0;

    // Opens the weekly schedule (frmConfig) modally on these values (Monday = 1); they are
    // changed only when the user accepts. Returns whether the user accepted.
    virtual bool EditSchedule(std::array<std::string, 8>& day_hours, std::array<std::string, 8>& day_modes) = 0;

    // The reminders have changed. From its next opening the repetitions menu lists
    // App::RepetitionMenuEntries(): one item per reminder with the whole entry as its caption,
    // and "(ninguna)" only when there is none.
    virtual void RepetitionMenuChanged() = 0;

    // Whether a modal dialog or message box of the program is open right now. A reminder that
    // falls due then waits: two dialogs must never stack up.
    virtual bool ModalOpen() const = 0;

    // The repeat-later dialog (frmRepetir), modal: the chosen delay's index in the table of
    // choices, or nothing for "Nunca".
    virtual std::optional<int> AskRepeatLater(const RepeatPrompt& prompt) = 0;

    // The alarm editor (frmAlarma) and the repetition editor (frmRepeticion), modal, on a form
    // that App prepared; the form comes back as the user left it.
    virtual EditorAction EditAlarm(AlarmForm& form) = 0;
    virtual EditorAction EditRepetition(RepetitionForm& form) = 0;
    // The alarm list (frmListaAlarmas): the picked alarm's number, 0 for none.
    virtual int ChooseAlarm(const EntryList& alarms) = 0;

    // The mark-task dialog (frmMarcar), modal: the new current task when one was marked or the
    // log was saved, nothing otherwise.
    virtual std::optional<std::string> MarkTask() = 0;

    // The month calendar: paints the grid as given.
    virtual void ShowMonthGrid(const MonthGrid& grid) = 0;
    // The detail area under the calendar: shown with a day's texts (the window grows to its
    // tall height), or hidden (back to the compact height).
    virtual void ShowDetails(const std::string& text) = 0;
    virtual void HideDetails() = 0;
    // Takes the focus off the calendar's buttons after each action.
    virtual void FocusAway() = 0;
    // A day's pop-up menu at the mouse: what the user chose, nothing when dismissed.
    virtual std::optional<DayMenuChoice> PopUpDayMenu(const DayMenu& menu) = 0;
    // The work history's window, opened on the current month; edits go to the recorder.
    virtual void ShowHistory(HistoryRecorder& history) = 0;

    // The file chooser of the iCalendar items: a file to write (for_saving) or to read, or
    // nothing when the user cancelled.
    virtual std::optional<std::string> ChooseIcsFile(bool for_saving) = 0;
};

}  // namespace vt
