#pragma once
#include <optional>
#include <string>

#include "history/work_history.h"
#include "store/app_state.h"

namespace vt {

class Clock;
class Dialogs;

// Keeps the history file in step with what the program sees of the working day: the start of
// a new day closes the last one, every change of the clock-ins or of the schedule records the
// day as it stands, and the closing path records the time the user left. The program has no
// box for that time; a day whose end it never saw stays open until the user completes it.
//
// Lines are only ever appended, one write each, and only when the day's record changes; the
// file is rewritten whole only for an edit made by the user.
class HistoryRecorder {
public:
    HistoryRecorder(AppState& state, Clock& clock, Dialogs& dialogs);

    // At start-up, once the settings are loaded and before the work date moves on to today:
    // reads the file (naming the lines that do not read, once), records the last work day if
    // it is over, and a day with no clock-in for each scheduled day the program did not run.
    void StartDay(const std::string& history_file);
    // The clock-ins or the schedule changed: the work day as it now stands, still open.
    void RecordClockIns();
    // The closing path: now is when the user left, if it is still the work day.
    void RecordLeaving();

    const WorkHistory& History() const { return history_; }
    const std::string& FilePath() const { return path_; }
    Date Today() const;

    // Past days whose end was not seen.
    std::vector<Date> OpenDays() const;
    // A day as corrected by the user: checked, then the file is rewritten atomically. Returns
    // the reason when it is refused or cannot be saved (memory then stays as the file is).
    std::optional<std::string> Edit(const HistoryDay& day);
    // Asks for the leaving time of each open past day; a cancelled question leaves it open.
    void AskToCompleteOpenDays();
    // The CSV of the days from..to, written to path. Returns the reason when it fails.
    std::optional<std::string> Export(const std::string& path, Date from, Date to) const;

private:
    HistoryDay DayFromSettings(Date date, const std::string& hours, const std::string& mode) const;
    // Appends the days that differ from their record, in one write.
    void Record(const std::vector<HistoryDay>& days, bool report_errors);

    AppState& state_;
    Clock& clock_;
    Dialogs& dialogs_;
    std::string path_;
    WorkHistory history_;
    // A file that could not be read is never written to: it may hold days we cannot see.
    bool usable_ = false;
};

// The most days with no clock-in that a start-up fills in after a gap; a longer gap is most
// likely a program that was not used at all, and filling it would only bury the balance.
inline constexpr int kMostDaysFilled = 62;

}  // namespace vt
