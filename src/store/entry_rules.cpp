#include "store/entry_rules.h"

#include <algorithm>

#include "platform/dialogs.h"
#include "store/dates.h"

namespace vt {

namespace {
bool AllDigits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}
int TwoDigits(std::string_view text, size_t at) {
    return (text[at] - '0') * 10 + (text[at + 1] - '0');
}
}  // namespace

std::string TimeBoxEditText(std::string_view shown) {
    std::string text;
    for (char c : shown) {
        if (c != ':') {
            text += c;
        }
    }
    return text;
}

std::optional<std::string> CompleteTimeEntry(std::string_view typed) {
    if (typed.empty()) {
        return std::string{};
    }
    if (typed.size() > 4 || !AllDigits(typed)) {
        return std::nullopt;
    }
    std::string digits(typed);
    switch (digits.size()) {
        case 1:
            digits = "0" + digits + "00";
            break;  // hours only
        case 2:
            digits += "00";
            break;  // two digits are hours too
        case 3:
            digits = "0" + digits;
            break;  // "hmm"
        default:
            break;
    }
    const int hour = TwoDigits(digits, 0);
    const int minute = TwoDigits(digits, 2);
    if (hour > 23 || minute > 59) {
        return std::nullopt;
    }
    return digits.substr(0, 2) + ":" + digits.substr(2, 2);
}

std::optional<std::string> ValidateTimeEntry(std::string_view typed, Dialogs& dialogs) {
    auto completed = CompleteTimeEntry(typed);
    if (!completed) {
        dialogs.Warn(kTimeFormatMessage);
    }
    return completed;
}

bool IsTimeBoxKey(char32_t key) {
    return key == 8 || (key >= U'0' && key <= U'9');
}

std::optional<std::string> ConvertDdmmyy(std::string_view typed) {
    if ((typed.size() != 6 && typed.size() != 8) || !AllDigits(typed)) {
        return std::nullopt;
    }
    const int day = TwoDigits(typed, 0);
    const int month = TwoDigits(typed, 2);
    const int year =
        typed.size() == 6 ? ExpandTwoDigitYear(TwoDigits(typed, 4)) : TwoDigits(typed, 4) * 100 + TwoDigits(typed, 6);
    if (year < 1 || month < 1 || month > 12 || day < 1) {
        return std::nullopt;
    }
    const Date date = MakeDate(day, month, year);
    if (!date.ok()) {
        return std::nullopt;
    }
    return FormatDate(date);
}

std::string ParseDdmmyy(std::string_view typed, Dialogs& dialogs) {
    auto converted = ConvertDdmmyy(typed);
    if (!converted) {
        dialogs.Warn(kDateFormatMessage);
        return {};
    }
    return *converted;
}

}  // namespace vt
