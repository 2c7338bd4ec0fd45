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

// An instance lock that is always free.
class FakeInstanceLock : public InstanceLock {
public:
    bool TryAcquire() override { return true; }
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
    void ShowDeparture(const std::string& label, const std::string& /*status*/) override { departure_label = label; }
    bool EditSchedule(std::array<std::string, 8>& day_hours, std::array<std::string, 8>& day_modes) override {
        return edit_schedule ? edit_schedule(day_hours, day_modes) : false;
    }

    void RepetitionMenuChanged() override { ++repetition_menu_changes; }
    bool ModalOpen() const override { return false; }
    // Esc and Enter both mean "5 Minutos".
    std::optional<int> AskRepeatLater(const RepeatPrompt& /*prompt*/) override { return 0; }

    EditorAction EditAlarm(AlarmForm& form) override {
        alarm_forms.push_back(form);
        return edit_alarm ? edit_alarm(form) : EditorAction::Cancel;
    }
    EditorAction EditRepetition(RepetitionForm& form) override {
        repetition_forms.push_back(form);
        return EditorAction::Cancel;
    }
    int ChooseAlarm(const EntryList& /*alarms*/) override { return 0; }

    std::optional<std::string> MarkTask() override { return std::nullopt; }
    void ShowMonthGrid(const MonthGrid& shown) override { grid = shown; }
    void ShowDetails(const std::string& text) override {
        details_visible = true;
        details = text;
    }
    void HideDetails() override { details_visible = false; }
    void FocusAway() override {}
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
    std::function<bool(std::array<std::string, 8>&, std::array<std::string, 8>&)> edit_schedule;
    int repetition_menu_changes = 0;
    // The editors: what they were opened with, and what the user does in them.
    std::vector<AlarmForm> alarm_forms;
    std::vector<RepetitionForm> repetition_forms;
    std::function<EditorAction(AlarmForm&)> edit_alarm;
    // The month calendar.
    MonthGrid grid;
    bool details_visible = true;
    std::string details;
    std::vector<DayMenu> day_menus;
    std::optional<DayMenuChoice> day_menu_choice;
    // The iCalendar file chooser: whether each was for saving, and the file the user picks.
    std::vector<bool> ics_choosers;
    std::optional<std::string> ics_file;
};

// A tray that only counts how often it was put in place.
class RecordingTrayView : public TrayView {
public:
    void Load() override { ++loads; }
    void Notify(const std::string& /*title*/, const std::string& /*text*/) override {}
    int loads = 0;
};

}  // namespace vt::test
