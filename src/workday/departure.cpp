#include "workday/departure.h"

#include <cstdint>

#include "store/dates.h"
#include "workday/clock_ins.h"

namespace vt {

namespace {

// The leading number of a text, as far as it goes (" 7:" -> 7); 0 when there is none.
int LeadingNumber(std::string_view text) {
    size_t at = 0;
    while (at < text.size() && text[at] == ' ') {
        ++at;
    }
    int value = 0;
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
        value = value * 10 + (text[at] - '0');
    }
    return value;
}

// The departure arithmetic is done in 16-bit minutes, as the clock-in times always were; the
// values involved (at most a day plus "99:99") never come near its limit.
using Minutes = std::int16_t;

Minutes RequiredMinutes(std::string_view today_hours) {
    const std::string_view hours = today_hours.substr(0, 2);
    const std::string_view minutes = today_hours.size() >= 2 ? today_hours.substr(today_hours.size() - 2) : "";
    return static_cast<Minutes>(LeadingNumber(hours) * 60 + LeadingNumber(minutes));
}

}  // namespace

int ClockTextMinutes(std::string_view time_text) {
    const auto minutes = ParseTimeOfDay(time_text);
    return minutes ? *minutes : 0;
}

int StageForMinutesLeft(int minutes_left) {
    if (minutes_left >= 11)
        return 5;
    if (minutes_left == 10)
        return 6;
    if (minutes_left >= 6)
        return 7;
    if (minutes_left == 5)
        return 8;
    if (minutes_left >= 2)
        return 9;
    if (minutes_left == 1)
        return 10;
    return kStageDeparted;
}

Departure ComputeDeparture(const WorkdayInput& day, int now_minutes) {
    Departure result;
    if (ClockInsProblem(day.entrada1, day.salida1, day.entrada2)) {
        result.label = kDepartureErrorLabel;
        result.status = kStatusError;
        return result;
    }
    result.consistent = true;

    const Minutes required = RequiredMinutes(day.today_hours);
    Minutes departure = -1;
    if (day.today_mode != "C") {
        if (!day.entrada1.empty() && !day.salida1.empty() && !day.entrada2.empty()) {
            // The break between leaving and coming back is added to the working time.
            const Minutes e1 = static_cast<Minutes>(ClockTextMinutes(day.entrada1));
            const Minutes s1 = static_cast<Minutes>(ClockTextMinutes(day.salida1));
            const Minutes e2 = static_cast<Minutes>(ClockTextMinutes(day.entrada2));
            departure = static_cast<Minutes>(e1 + required + (e2 - s1));
        } else if (day.entrada1.empty()) {
            result.stage = 2;
        } else if (day.salida1.empty()) {
            result.stage = 3;
        } else {
            result.stage = 4;
        }
    } else if (!day.entrada1.empty()) {
        departure = static_cast<Minutes>(ClockTextMinutes(day.entrada1) + required);
    } else {
        result.stage = 1;
    }

    if (departure == -1) {
        result.label = kDepartureNotSet;
        result.status = kStatusNotSet;
        return result;
    }
    result.stage = StageForMinutesLeft(departure - now_minutes);
    // Past midnight the time shown wraps, but the stage above was taken from the unwrapped
    // value: a departure after midnight is never "reached" before midnight.
    if (departure >= 1440) {
        departure = static_cast<Minutes>(departure - 1440);
    }
    result.label = FormatTimeOfDay(departure);
    result.status = std::string("Hora de salida: ") + result.label;
    return result;
}

}  // namespace vt
