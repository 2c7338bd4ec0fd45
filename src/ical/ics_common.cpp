#include "ical/ics_common.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "agenda/entries.h"
#include "agenda/recurrence.h"
#include "agenda/text_marks.h"
#include "platform/stream_dialogs.h"

namespace vt {

namespace {

std::string ZoneFromPath(const std::string& path) {
    const std::string marker = "zoneinfo/";
    const auto at = path.find(marker);
    return at == std::string::npos ? std::string{} : path.substr(at + marker.size());
}

}  // namespace

std::vector<Date> AlarmOccurrences(std::string_view alarm_entry, Date from, Date to) {
    std::vector<Date> dates;
    const auto stored = AlarmDate(alarm_entry);
    const auto count = AlarmCount(alarm_entry);
    const std::string unit = GetAlarmField(alarm_entry, 3);
    if (!AlarmReadable(alarm_entry) || !stored || !count || (unit != "D" && unit != "M" && unit != "A")) {
        return dates;
    }
    const auto keep = [&](Date d) {
        if (AlarmActiveOn(d, alarm_entry)) {
            dates.push_back(d);
        }
    };
    if (*count == 0) {
        if (from <= *stored && *stored <= to) {
            keep(*stored);
        }
        return dates;
    }
    // Units are checked before any step, so the "MAL!" box that NextOccurrence shows for an
    // unknown one can never come up here.
    StreamDialogs silent;
    Date walk = *stored;
    Date lower = std::max(from, *stored);
    while (const auto next = NextOccurrence(walk, *count, unit, lower, to, 1, false, lower, silent)) {
        keep(*next);
        walk = *next;
        lower = AddDays(*next, 1);
        if (lower > to) {
            break;
        }
    }
    return dates;
}

std::string SystemTimeZoneName() {
    if (const char* tz = std::getenv("TZ"); tz != nullptr && *tz != '\0') {
        std::string name = tz;
        if (name.front() == ':') {
            name.erase(0, 1);
        }
        if (name.find('/') == 0) {
            return ZoneFromPath(name);
        }
        return name;
    }
    std::error_code error;
    const auto target = std::filesystem::read_symlink("/etc/localtime", error);
    if (!error) {
        if (std::string zone = ZoneFromPath(target.string()); !zone.empty()) {
            return zone;
        }
    }
    std::ifstream file("/etc/timezone");
    std::string zone;
    std::getline(file, zone);
    return zone;
}

}  // namespace vt
