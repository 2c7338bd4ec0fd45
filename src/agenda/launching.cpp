#include "agenda/launching.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>
#include <vector>

#include "agenda/char_positions.h"
#include "agenda/entries.h"
#include "agenda/recurrence.h"
#include "agenda/text_marks.h"

namespace vt {

LaunchResult LaunchDueAlarms(EntryList& alarms, EntryList& repetitions, Date today, Dialogs& dialogs,
                             const RunLog& run_log) {
    LaunchResult result;
    // The length is read again on every round: a non-repeating alarm is removed on the way, and
    // the alarm that moves into its place is looked at without advancing the index. Held alarms
    // stay, and only later ones are removed, so the places recorded stay right.
    int i = 1;
    while (i <= alarms.Count()) {
        const AlarmParts alarm = ReadAlarm(alarms[i]);
        if (!alarm.Readable() || *alarm.date > today) {
            ++i;
            continue;
        }
        const Date date = *alarm.date;
        const std::string entry = alarms[i];  // as it stood, for the log, before any change
        const std::string_view time = alarm.time;
        const std::string text = SplitStartDateTag(alarm.text).text;
        const int count = *alarm.count;
        // An alarm from a day the program did not run also owes today's reminder when today is
        // one of its occurrences; both must fit, or the advance would lose the second.
        bool today_too = false;
        if (count != 0 && date != today) {
            Date occurrence = date;
            today_too =
                NextOccurrence(occurrence, count, alarm.unit, today, kOpenEnd, 1, false, today, dialogs) == today;
        }
        if (repetitions.Count() + (today_too ? 2 : 1) > kMaxEntries) {
            result.held.push_back(i);
            ++i;
            continue;
        }
        // The reminder keeps the stored date even when it is past: it is then due at once.
        repetitions.Append(BuildRepetitionEntry(CharMid(entry, 1, 10), time, text));
        if (run_log) {
            run_log("REP> " + entry);
        }
        ++result.launched;
        if (today_too) {
            repetitions.Append(BuildRepetitionEntry(FormatDate(today), time, text));
        }
        if (count == 0) {
            alarms.Remove(i);
            continue;
        }
        ++i;
    }
    return result;
}

int AdvanceAlarmDates(EntryList& alarms, EntryList& repetitions, Date today, Dialogs& dialogs, const RunLog& run_log) {
    const LaunchResult result = LaunchDueAlarms(alarms, repetitions, today, dialogs, run_log);
    if (result.held.empty()) {
        AdvanceStoredAlarmDates(alarms, today, dialogs);
        return 0;
    }
    // The held alarms sit out the advance: moved on, they would never be reminded of.
    EntryList held;
    EntryList others;
    size_t next_held = 0;
    for (int i = 1; i <= alarms.Count(); ++i) {
        if (next_held < result.held.size() && result.held[next_held] == i) {
            held.Append(std::move(alarms[i]));
            ++next_held;
        } else {
            others.Append(std::move(alarms[i]));
        }
    }
    AdvanceStoredAlarmDates(others, today, dialogs);
    alarms = std::move(held);
    for (auto& entry : others) {
        alarms.Append(entry);
    }
    SortAlarms(alarms);
    return static_cast<int>(result.held.size());
}

void SortRepetitions(EntryList& repetitions) {
    StableSortByKey(repetitions, [](std::string_view entry) -> std::optional<long long> {
        const auto moment = RepetitionMoment(entry);
        return moment ? std::optional<long long>(moment->time_since_epoch().count()) : std::nullopt;
    });
}

int FindDueRepetition(const EntryList& repetitions, DateTime now, int start) {
    using std::chrono::floor;
    using std::chrono::minutes;
    const auto this_minute = floor<minutes>(now);
    for (int i = std::max(start, 1); i <= repetitions.Count(); ++i) {
        const auto moment = RepetitionMoment(repetitions[i]);
        if (moment && floor<minutes>(*moment) <= this_minute) {
            return i;
        }
    }
    return 0;
}

std::string RepeatLaterTarget(DateTime now, int choice) {
    if (choice < 0 || choice >= static_cast<int>(kRepeatChoices.size())) {
        choice = 0;
    }
    const std::string_view code = kRepeatChoices[static_cast<std::size_t>(choice)].code;
    DateTime target = now;
    if (const auto minutes = ParseTimeOfDay(code)) {
        target += std::chrono::minutes{*minutes};
    } else {
        int days = 0;
        std::from_chars(code.data(), code.data() + code.size(), days);
        target += std::chrono::days{days};
    }
    return FormatDate(DateOf(target)) + " " + FormatTime(target);
}

std::string RepeatedEntry(std::string_view target, std::string_view due_entry) {
    return BuildRepetitionEntry(CharMid(target, 1, 10), CharMid(target, 12, 5), CharMid(due_entry, 18));
}

}  // namespace vt
