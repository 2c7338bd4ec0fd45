#include "agenda/entries.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <numeric>
#include <utility>

#include "agenda/char_positions.h"
#include "agenda/text_marks.h"
#include "store/app_state.h"
#include "store/settings_store.h"

namespace vt {

namespace {

// Exactly two digits; the builders never write a count of more, so anything else is a hand edit.
std::optional<int> TwoDigits(std::string_view field) {
    if (field.size() != 2 || field[0] < '0' || field[0] > '9' || field[1] < '0' || field[1] > '9') {
        return std::nullopt;
    }
    return (field[0] - '0') * 10 + (field[1] - '0');
}

// At least two digits, with the sign in front of them (-5 is "-05").
std::string FormatCount(int value) {
    if (value >= 0 && value < 100) {
        return {static_cast<char>('0' + value / 10), static_cast<char>('0' + value % 10)};
    }
    char buf[16];
    std::snprintf(buf, sizeof buf, value < 0 ? "-%02d" : "%02d", value < 0 ? -value : value);
    return buf;
}

void AppendWithoutCommas(std::string& out, std::string_view text) {
    const std::size_t start = out.size();
    out.append(text);
    std::replace(out.begin() + static_cast<std::ptrdiff_t>(start), out.end(), ',', ';');
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

int Digits(std::string_view text, std::size_t pos, std::size_t n) {
    int value = 0;
    for (std::size_t i = pos; i < pos + n; ++i) {
        value = value * 10 + (text[i] - '0');
    }
    return value;
}

// "dd/mm/yyyy hh:mm" exactly as the builders write it, read in place: the repetition check runs
// every second over up to 998 entries. The layout is all ASCII, so bytes are characters here.
std::optional<DateTime> ReadMoment(std::string_view entry) {
    static constexpr std::string_view kShape = "99/99/9999 99:99";
    if (entry.size() < kShape.size()) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < kShape.size(); ++i) {
        if (kShape[i] == '9' ? !IsDigit(entry[i]) : entry[i] != kShape[i]) {
            return std::nullopt;
        }
    }
    const int day = Digits(entry, 0, 2);
    const int month = Digits(entry, 3, 2);
    const int year = Digits(entry, 6, 4);
    const int hour = Digits(entry, 11, 2);
    const int minute = Digits(entry, 14, 2);
    if (year < 1 || month < 1 || month > 12 || day < 1 || hour > 23 || minute > 59) {
        return std::nullopt;
    }
    const Date date = MakeDate(day, month, year);
    if (!date.ok()) {
        return std::nullopt;
    }
    return MakeDateTime(date, hour, minute);
}

}  // namespace

std::string GetAlarmField(std::string_view entry, int field) {
    switch (field) {
        case 1:
            return std::string(CharMid(entry, 1, 10));
        case 2:
            return std::string(CharMid(entry, 12, 5));
        case 3:
            return std::string(CharMid(entry, 21, 1));
        case 4:
            return std::string(CharMid(entry, 18, 2));
        case 5:
            return std::string(CharMid(entry, 23, 2));
        case 6:
            return std::string(CharMid(entry, 28));
        case 7:
            return std::string(CharMid(entry, 1, 16));
        case 9:
            return std::string(CharMid(entry, 26, 1));
        case 10:
            return SplitStartDateTag(CharMid(entry, 28)).date_field;
        case 11:
            return SplitStartDateTag(CharMid(entry, 28)).text;
        default:
            return {};
    }
}

std::string GetAlarmField(const EntryList& alarms, int index, int field) {
    if (index < 1 || index > alarms.Count()) {
        return {};
    }
    return GetAlarmField(alarms[index], field);
}

std::string GetRepetitionField(std::string_view entry, int field) {
    switch (field) {
        case 1:
            return std::string(CharMid(entry, 1, 10));
        case 2:
            return std::string(CharMid(entry, 12, 5));
        case 6:
            return std::string(CharMid(entry, 18));
        case 7:
            return std::string(CharMid(entry, 1, 16));
        case 8:
            return std::string(CharMid(entry, 12));
        default:
            return {};
    }
}

std::string BuildAlarmEntry(std::string_view date, std::string_view time, int count, std::string_view unit,
                            int notice_days, std::string_view priority, std::string_view text) {
    std::string entry;
    entry.reserve(date.size() + time.size() + unit.size() + priority.size() + text.size() + 12);
    entry.append(date).append(" ").append(time).append(" ");
    entry.append(FormatCount(count)).append(" ").append(unit).append(" ");
    entry.append(FormatCount(notice_days)).append(" ").append(priority).append(" ");
    AppendWithoutCommas(entry, text);
    return entry;
}

std::string BuildRepetitionEntry(std::string_view date, std::string_view time, std::string_view text) {
    std::string entry;
    if (const auto read = ParseDate(date)) {
        entry = FormatDate(*read);
    } else {
        entry = date;
    }
    entry.push_back(' ');
    if (const auto minutes = ParseTimeOfDay(time)) {
        entry += FormatTimeOfDay(*minutes);
    } else {
        entry += time;
    }
    entry.push_back(' ');
    AppendWithoutCommas(entry, text);
    return entry;
}

void AppendAlarm(EntryList& alarms, std::string entry) {
    alarms.Append(std::move(entry));
}

void AppendRepetition(EntryList& repetitions, std::string entry) {
    repetitions.Append(std::move(entry));
}

void RemoveAlarm(EntryList& alarms, int index) {
    if (index >= 1 && index <= alarms.Count()) {
        alarms.Remove(index);
    }
}

void RemoveRepetition(EntryList& repetitions, int index) {
    if (index >= 1 && index <= repetitions.Count()) {
        repetitions.Remove(index);
    }
}

std::optional<Date> AlarmDate(std::string_view entry) {
    return ParseDate(CharMid(entry, 1, 10));
}

std::optional<int> AlarmTime(std::string_view entry) {
    return ParseTimeOfDay(CharMid(entry, 12, 5));
}

std::optional<int> AlarmCount(std::string_view entry) {
    return TwoDigits(CharMid(entry, 18, 2));
}

std::optional<int> AlarmNoticeDays(std::string_view entry) {
    return TwoDigits(CharMid(entry, 23, 2));
}

bool AlarmReadable(std::string_view entry) {
    return ReadAlarm(entry).Readable();
}

AlarmParts ReadAlarm(std::string_view entry) {
    // "dd/mm/yyyy hh:mm NN U NN P text": where characters 1 to 28 begin.
    std::array<std::size_t, 28> at{};
    CharOffsets(entry, at);
    const auto chars = [&](std::size_t first, std::size_t count) {
        return entry.substr(at[first - 1], at[first - 1 + count] - at[first - 1]);
    };
    AlarmParts parts;
    parts.date = ParseDate(chars(1, 10));
    parts.time = chars(12, 5);
    parts.minutes = ParseTimeOfDay(parts.time);
    parts.count = TwoDigits(chars(18, 2));
    parts.unit = chars(21, 1);
    parts.notice_days = TwoDigits(chars(23, 2));
    parts.priority = chars(26, 1);
    parts.text = entry.substr(at[27]);
    return parts;
}

std::optional<DateTime> RepetitionMoment(std::string_view entry) {
    return ReadMoment(entry);
}

void StableSortByKey(EntryList& entries, std::optional<long long> (*key_of)(std::string_view entry)) {
    std::vector<std::optional<long long>> keys;
    keys.reserve(static_cast<std::size_t>(entries.Count()));
    for (const auto& entry : entries) {
        keys.push_back(key_of(entry));
    }
    const auto before = [&](std::size_t a, std::size_t b) { return keys[a] && (!keys[b] || *keys[a] < *keys[b]); };
    std::vector<std::size_t> order(keys.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    // Lists are kept in order, so after a load or a change they nearly always still are; then
    // nothing needs to move.
    if (std::is_sorted(order.begin(), order.end(), before)) {
        return;
    }
    std::stable_sort(order.begin(), order.end(), before);
    EntryList sorted;
    for (const std::size_t at : order) {
        sorted.Append(std::move(entries[static_cast<int>(at) + 1]));
    }
    entries = std::move(sorted);
}

void SortAlarms(EntryList& alarms) {
    StableSortByKey(alarms, [](std::string_view entry) -> std::optional<long long> {
        const auto date = AlarmDate(entry);
        return date ? std::optional<long long>(std::chrono::sys_days{*date}.time_since_epoch().count()) : std::nullopt;
    });
}

std::vector<std::string> UnreadableEntryKeys(const Settings& settings) {
    std::vector<std::string> keys;
    int number = 0;
    for (const auto& entry : settings.Repetitions) {
        ++number;
        if (!RepetitionMoment(entry)) {
            keys.push_back(EntryKey("REP_", number));
        }
    }
    number = 0;
    for (const auto& entry : settings.Alarms) {
        ++number;
        if (!AlarmReadable(entry)) {
            keys.push_back(EntryKey("ALA_", number));
        }
    }
    return keys;
}

}  // namespace vt
