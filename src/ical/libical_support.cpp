#include "ical/libical_support.h"

#include <algorithm>
#include <cstdlib>

namespace vt::ical {

std::string AsText(icalcomponent* component) {
    char* raw = icalcomponent_as_ical_string_r(component);
    if (raw == nullptr) {
        return {};
    }
    std::string text = raw;
    icalmemory_free_buffer(raw);
    return text;
}

icaltimezone* ZoneByName(const std::string& name) {
    if (name.empty()) {
        return nullptr;
    }
    if (name == "UTC" || name == "Etc/UTC" || name == "Etc/UCT" || name == "UCT" || name == "Zulu" ||
        name == "Etc/Zulu" || name == "GMT" || name == "Etc/GMT" || name == "Universal") {
        return icaltimezone_get_utc_timezone();
    }
    return icaltimezone_get_builtin_timezone(name.c_str());
}

icaltimetype WallTime(DateTime moment) {
    const Date date = DateOf(moment);
    const int seconds = SecondsOfDay(moment);
    icaltimetype time = icaltime_null_time();
    time.year = static_cast<int>(date.year());
    time.month = static_cast<int>(static_cast<unsigned>(date.month()));
    time.day = static_cast<int>(static_cast<unsigned>(date.day()));
    time.hour = seconds / 3600;
    time.minute = seconds / 60 % 60;
    time.second = seconds % 60;
    time.is_date = 0;
    return time;
}

icaltimetype DayTime(Date date) {
    icaltimetype time = icaltime_null_date();
    time.year = static_cast<int>(date.year());
    time.month = static_cast<int>(static_cast<unsigned>(date.month()));
    time.day = static_cast<int>(static_cast<unsigned>(date.day()));
    return time;
}

std::optional<DateTime> MomentOf(const icaltimetype& time) {
    if (time.year < 1 || time.year > 9999 || time.month < 1 || time.month > 12 || time.day < 1 || time.day > 31) {
        return std::nullopt;
    }
    const Date date{std::chrono::year{time.year}, std::chrono::month{static_cast<unsigned>(time.month)},
                    std::chrono::day{static_cast<unsigned>(time.day)}};
    if (!date.ok()) {
        return std::nullopt;
    }
    if (time.is_date) {
        return MakeDateTime(date);
    }
    if (time.hour < 0 || time.hour > 23 || time.minute < 0 || time.minute > 59 || time.second < 0 || time.second > 60) {
        return std::nullopt;
    }
    return MakeDateTime(date, time.hour, time.minute, std::min(time.second, 59));
}

}  // namespace vt::ical
