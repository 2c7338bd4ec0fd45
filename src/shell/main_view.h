#pragma once
#include <array>
#include <string>

namespace vt {

// What App asks of the main window and of the dialogs it opens.
class MainView {
public:
    virtual ~MainView() = default;
    virtual void SetCaption(const std::string& caption) = 0;

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
};

}  // namespace vt
