#pragma once
#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "agenda/alarm_editor.h"
#include "agenda/repetition_editor.h"
#include "calendar/day_menu.h"
#include "calendar/month_grid.h"
#include "platform/instance_lock.h"
#include "platform/locale_info.h"
#include "shell/main_view.h"
#include "shell/tray_view.h"

namespace vt::test {

// A desktop whose short date format the test chooses.
class FakeLocaleInfo : public LocaleInfo {
public:
    std::string ShortDateFormat() const override { return format; }
    std::string format = "dd/MM/yyyy";
};

// An instance lock that is free unless the test says another copy holds it.
class FakeInstanceLock : public InstanceLock {
public:
    bool TryAcquire() override { return !held_elsewhere; }
    bool held_elsewhere = false;
};

// A main window that only remembers what it was told to show; its boxes hold what the test
// types, and its schedule dialog does what the test scripts.
class RecordingMainView : public MainView {
public:
    void SetCaption(const std::string& caption) override { captions.push_back(caption); }
    void SetBusyPointer(bool on) override { busy_pointer.push_back(on); }
    void ShowClockIns(const std::array<std::string, 3>& times) override {
        clock_ins = times;
        typed = times;
    }
    void SetAfternoonLocked(bool locked) override { afternoon_locked = locked; }
    std::string ClockInText(int index) const override { return typed[static_cast<size_t>(index)]; }
    void ShowDeparture(const std::string& label, const std::string& status) override {
        departure_label = label;
        status_line = status;
    }
    bool EditSchedule(std::array<std::string, 8>& day_hours, std::array<std::string, 8>& day_modes) override {
        ++schedule_opened;
        return edit_schedule ? edit_schedule(day_hours, day_modes) : false;
    }

    void ShowRepetitionMenu(const std::vector<std::string>& entries) override { repetition_menu = entries; }
    bool ModalOpen() const override { return modal_open; }
    std::optional<int> AskRepeatLater(const RepeatPrompt& prompt) override {
        prompts.push_back(prompt);
        if (on_repeat_prompt) {
            on_repeat_prompt();
        }
        if (repeat_answers.empty()) {
            return 0;  // Esc and Enter both mean "5 Minutos"
        }
        const std::optional<int> answer = repeat_answers.front();
        repeat_answers.erase(repeat_answers.begin());
        return answer;
    }

    EditorAction EditAlarm(AlarmForm& form) override {
        alarm_forms.push_back(form);
        return edit_alarm ? edit_alarm(form) : EditorAction::Cancel;
    }
    EditorAction EditRepetition(RepetitionForm& form) override {
        repetition_forms.push_back(form);
        return edit_repetition ? edit_repetition(form) : EditorAction::Cancel;
    }
    int ChooseAlarm(const EntryList& alarms) override {
        listed_alarms = std::vector<std::string>(alarms.begin(), alarms.end());
        return chosen_alarm;
    }

    std::optional<std::string> MarkTask() override {
        ++tasks_opened;
        return marked_task;
    }
    void ShowMonthGrid(const MonthGrid& shown) override {
        grid = shown;
        ++grids_shown;
    }
    void ShowDetails(const std::string& text) override {
        details_visible = true;
        details = text;
    }
    void HideDetails() override { details_visible = false; }
    void FocusAway() override { ++focus_moves; }
    std::optional<DayMenuChoice> PopUpDayMenu(const DayMenu& menu) override {
        day_menus.push_back(menu);
        return day_menu_choice;
    }
    void ShowHistory(HistoryRecorder&) override { ++history_shown; }
    std::optional<std::string> ChooseIcsFile(bool for_saving) override {
        ics_choosers.push_back(for_saving);
        return ics_file;
    }

    int history_shown = 0;
    std::vector<std::string> captions;
    std::vector<bool> busy_pointer;
    std::array<std::string, 3> clock_ins;
    std::array<std::string, 3> typed;
    std::optional<bool> afternoon_locked;
    std::string departure_label;
    std::string status_line;
    int schedule_opened = 0;
    std::function<bool(std::array<std::string, 8>&, std::array<std::string, 8>&)> edit_schedule;
    std::vector<std::string> repetition_menu;
    bool modal_open = false;
    std::vector<RepeatPrompt> prompts;
    // Answers of the repeat-later dialog in order; nothing stands for "Nunca".
    std::vector<std::optional<int>> repeat_answers;
    std::function<void()> on_repeat_prompt;
    // The editors: what they were opened with, and what the user does in them.
    std::vector<AlarmForm> alarm_forms;
    std::vector<RepetitionForm> repetition_forms;
    std::function<EditorAction(AlarmForm&)> edit_alarm;
    std::function<EditorAction(RepetitionForm&)> edit_repetition;
    std::vector<std::string> listed_alarms;
    int chosen_alarm = 0;
    int tasks_opened = 0;
    std::optional<std::string> marked_task;
    // The month calendar.
    MonthGrid grid;
    int grids_shown = 0;
    bool details_visible = true;
    std::string details;
    int focus_moves = 0;
    std::vector<DayMenu> day_menus;
    std::optional<DayMenuChoice> day_menu_choice;
    // The iCalendar file chooser: whether each was for saving, and the file the user picks.
    std::vector<bool> ics_choosers;
    std::optional<std::string> ics_file;
};

// A tray that only counts how often it was put in place and keeps its notifications.
class RecordingTrayView : public TrayView {
public:
    void Load() override { ++loads; }
    void Notify(const std::string& title, const std::string& text) override {
        notifications.push_back(title + ": " + text);
    }
    int loads = 0;
    std::vector<std::string> notifications;
};

}  // namespace vt::test
