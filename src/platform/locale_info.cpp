#include "platform/locale_info.h"

namespace vt {

namespace {

// Takes a run of `letter` from the front of `rest`; returns its length.
size_t TakeRun(std::string_view& rest, char letter) {
    size_t length = 0;
    while (length < rest.size() && rest[length] == letter) {
        ++length;
    }
    rest.remove_prefix(length);
    return length;
}

bool TakeSlash(std::string_view& rest) {
    if (rest.empty() || rest.front() != '/') {
        return false;
    }
    rest.remove_prefix(1);
    return true;
}

// Whether the pattern holds a day, a month and a year, and not in the month-first order of
// "M/d/yy": a desktop that writes dates so would read the program's dates the wrong way round.
bool IsFullDateNotMonthFirst(std::string_view pattern) {
    const size_t day = pattern.find('d');
    const size_t month = pattern.find('M');
    const size_t year = pattern.find('y');
    if (day == std::string_view::npos || month == std::string_view::npos || year == std::string_view::npos) {
        return false;
    }
    return !(month < day && day < year);
}

}  // namespace

bool IsDayMonthYearWithSlashes(std::string_view pattern) {
    std::string_view rest = pattern;
    const size_t day = TakeRun(rest, 'd');
    if (day < 1 || day > 2 || !TakeSlash(rest)) {
        return false;
    }
    const size_t month = TakeRun(rest, 'M');
    if (month < 1 || month > 2 || !TakeSlash(rest)) {
        return false;
    }
    const size_t year = TakeRun(rest, 'y');
    return rest.empty() && (year == 1 || year == 2 || year == 4);
}

std::string DesktopShortDateFormat(std::string_view own_pattern, std::string_view country_pattern) {
    if (IsDayMonthYearWithSlashes(own_pattern) ||
        (IsFullDateNotMonthFirst(own_pattern) && IsDayMonthYearWithSlashes(country_pattern))) {
        return "dd/MM/yyyy";
    }
    return std::string(own_pattern);
}

}  // namespace vt
