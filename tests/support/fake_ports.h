#pragma once
#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

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

    std::vector<std::string> captions;
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
