#include "calendar/proximity_report.h"

#include <array>
#include <chrono>
#include <optional>
#include <string_view>

#include "agenda/entries.h"
#include "agenda/text_marks.h"
#include "workday/workday.h"

namespace vt {

namespace {

using std::chrono::days;
using std::chrono::sys_days;

enum Group : std::size_t { kToday, kTomorrow, kDayAfter, kWeek, kFortnight, kGroupCount };

constexpr std::array<std::string_view, kGroupCount> kHeaders{
    "HOY:", "MAÑANA:", "Pasado mañana:", "Antes de una semana:", "Antes de 15 días:"};

constexpr std::string_view kNewLine = "\r\n";

// The first group whose test holds, in the order of the tests: a date before today is no
// "today" or "tomorrow" but is still earlier than a week from now.
std::optional<Group> GroupOf(sys_days date, sys_days today) {
    if (date == today) {
        return kToday;
    }
    if (date == today + days{1}) {
        return kTomorrow;
    }
    if (date == today + days{2}) {
        return kDayAfter;
    }
    if (date < today + days{7}) {
        return kWeek;
    }
    if (date < today + days{14}) {
        return kFortnight;
    }
    return std::nullopt;
}

}  // namespace

std::string ProximityReport(const EntryList& alarms, Date today) {
    const sys_days today_days{today};
    std::array<bool, kGroupCount> started{};
    std::string text;
    for (const std::string& entry : alarms) {
        const auto date = AlarmDate(entry);
        const auto notice = AlarmNoticeDays(entry);
        // An alarm with a start date still to come does not exist yet.
        if (!date || !notice || !AlarmActiveOn(*date, entry)) {
            continue;
        }
        const sys_days due{*date};
        if (due - days{*notice} > today_days) {
            continue;
        }
        const auto group = GroupOf(due, today_days);
        if (!group) {
            continue;
        }
        if (!started[*group]) {
            started[*group] = true;
            text.append(kNewLine).append(kHeaders[*group]).append(kNewLine);
        }
        text.append("- ");
        if (*group == kWeek || *group == kFortnight) {
            text.append(WeekdayName(*date))
                .append(" ")
                .append(std::to_string(static_cast<unsigned>(date->day())))
                .append(" : ");
        }
        text.append(AnniversaryText(GetAlarmField(entry, 11), static_cast<int>(date->year()))).append(kNewLine);
    }
    if (text.starts_with(kNewLine)) {
        text.erase(0, kNewLine.size());
    }
    if (text.empty()) {
        text = kEmptyProximityReport;
    }
    return text;
}

}  // namespace vt
