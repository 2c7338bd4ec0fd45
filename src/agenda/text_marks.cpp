#include "agenda/text_marks.h"

#include <cstdint>
#include <limits>

#include "agenda/char_positions.h"

namespace vt {

namespace {

bool AllDigits(std::string_view text) {
    for (const char c : text) {
        if (c < '0' || c > '9') {
            return false;
        }
    }
    return true;
}

int DigitsValue(std::string_view digits) {
    int value = 0;
    for (const char c : digits) {
        value = value * 10 + (c - '0');
    }
    return value;
}

// Every occurrence of `group` in `text` replaced, left to right, without rescanning what was put in.
std::string ReplaceAll(std::string_view text, std::string_view group, std::string_view by) {
    std::string out;
    out.reserve(text.size());
    std::size_t pos = 0;
    for (std::size_t hit = text.find(group); hit != std::string_view::npos; hit = text.find(group, pos)) {
        out.append(text.substr(pos, hit - pos)).append(by);
        pos = hit + group.size();
    }
    out.append(text.substr(pos));
    return out;
}

// The six digits of the text's start-date tag, or nothing. The six characters between "<" and
// ">" must all be digits, and a digit is one byte, so counting bytes here counts characters.
std::optional<std::string_view> FindTag(std::string_view text) {
    const std::size_t open = text.find('<');
    if (open == std::string_view::npos) {
        return std::nullopt;
    }
    const std::size_t close = text.find('>', open);
    if (close == std::string_view::npos || close - open != 7) {
        return std::nullopt;
    }
    const std::string_view digits = text.substr(open + 1, 6);
    if (!AllDigits(digits)) {
        return std::nullopt;
    }
    return digits;
}

std::optional<Date> TagDate(std::string_view digits) {
    const int day = DigitsValue(digits.substr(0, 2));
    const int month = DigitsValue(digits.substr(2, 2));
    const int year = ExpandTwoDigitYear(DigitsValue(digits.substr(4, 2)));
    if (day < 1 || month < 1 || month > 12) {
        return std::nullopt;
    }
    const Date date = MakeDate(day, month, year);
    return date.ok() ? std::optional<Date>{date} : std::nullopt;
}

}  // namespace

StartDateTag SplitStartDateTag(std::string_view text) {
    StartDateTag result;
    const auto digits = FindTag(text);
    if (!digits) {
        result.text = std::string(text);
        return result;
    }
    result.start = TagDate(*digits);
    if (result.start) {
        result.date_field.append(digits->substr(0, 2)).append("/");
        result.date_field.append(digits->substr(2, 2)).append("/");
        result.date_field.append(digits->substr(4, 2));
    }
    std::string tag(1, '<');
    tag.append(*digits).push_back('>');
    result.text = std::string(TrimBlanks(ReplaceAll(text, tag, "")));
    return result;
}

std::optional<Date> AlarmStartDate(std::string_view alarm_entry) {
    // Calendars ask this for every alarm on every day shown, so it reads the tag in place.
    const auto digits = FindTag(CharMid(alarm_entry, 28));
    return digits ? TagDate(*digits) : std::nullopt;
}

bool AlarmActiveOn(Date date, std::string_view alarm_entry) {
    const auto start = AlarmStartDate(alarm_entry);
    return !start || *start <= date;
}

bool AlarmActiveOn(Date date, const EntryList& alarms, int index) {
    if (index < 1 || index > alarms.Count()) {
        return false;
    }
    return AlarmActiveOn(date, alarms[index]);
}

std::string AnniversaryText(std::string_view text, int year) {
    const std::size_t open = text.find('(');
    // Six characters "(dddd)": digits and parentheses are one byte each, so bytes count them.
    if (open == std::string_view::npos || text.size() - open < 6) {
        return std::string(text);
    }
    const std::string_view group = text.substr(open, 6);
    if (group[5] != ')' || !AllDigits(group.substr(1, 4))) {
        return std::string(text);
    }
    const long long elapsed = static_cast<long long>(year) - DigitsValue(group.substr(1, 4));
    if (elapsed < std::numeric_limits<std::int16_t>::min() || elapsed > std::numeric_limits<std::int16_t>::max()) {
        return std::string(text);
    }
    const auto years = static_cast<std::int16_t>(elapsed);
    std::string shown(1, '(');
    shown.append(std::to_string(years)).push_back(')');
    return ReplaceAll(text, group, shown);
}

}  // namespace vt
