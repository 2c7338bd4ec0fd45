#include "store/dates.h"

#include <array>
#include <charconv>
#include <cstdio>

namespace vt {

using namespace std::chrono;

Date MakeDate(int day, int month, int year) {
    return Date{std::chrono::year{year}, std::chrono::month{static_cast<unsigned>(month)},
                std::chrono::day{static_cast<unsigned>(day)}};
}

DateTime MakeDateTime(Date date, int hour, int minute, int second) {
    return local_days{date} + hours{hour} + minutes{minute} + seconds{second};
}

Date DateOf(DateTime moment) {
    return Date{floor<days>(moment)};
}

int SecondsOfDay(DateTime moment) {
    return static_cast<int>((moment - floor<days>(moment)).count());
}

int MinutesOfDay(DateTime moment) {
    return SecondsOfDay(moment) / 60;
}

int WeekdayMonday1(Date date) {
    return static_cast<int>(weekday{sys_days{date}}.iso_encoding());
}

static Date ClampDay(year_month ym, unsigned wanted) {
    const unsigned last = static_cast<unsigned>(year_month_day_last{ym.year(), month_day_last{ym.month()}}.day());
    return Date{ym.year(), ym.month(), std::chrono::day{wanted < last ? wanted : last}};
}

Date AddMonths(Date date, int months) {
    const year_month ym = year_month{date.year(), date.month()} + std::chrono::months{months};
    return ClampDay(ym, static_cast<unsigned>(date.day()));
}

Date AddYears(Date date, int years) {
    return AddMonths(date, years * 12);
}

Date AddDays(Date date, int count) {
    return Date{sys_days{date} + days{count}};
}

std::string FormatDate(Date date) {
    // Written by hand for the dates every entry has: printf's format parsing was most of what
    // the start of a full agenda spent moving a thousand alarms on.
    const unsigned day = static_cast<unsigned>(date.day());
    const unsigned month = static_cast<unsigned>(date.month());
    const int year = static_cast<int>(date.year());
    if (day < 100 && month < 100 && year >= 0 && year < 10000) {
        const auto digit = [](unsigned value) { return static_cast<char>('0' + value % 10); };
        const auto y = static_cast<unsigned>(year);
        return {digit(day / 10), digit(day),     '/',           digit(month / 10), digit(month), '/',
                digit(y / 1000), digit(y / 100), digit(y / 10), digit(y)};
    }
    char buf[32];
    std::snprintf(buf, sizeof buf, "%02u/%02u/%04d", static_cast<unsigned>(date.day()),
                  static_cast<unsigned>(date.month()), static_cast<int>(date.year()));
    return buf;
}

std::string FormatWorkDate(Date date) {
    char buf[32];
    const int yy = ((static_cast<int>(date.year()) % 100) + 100) % 100;
    std::snprintf(buf, sizeof buf, "%02u-%02u-%02d", static_cast<unsigned>(date.day()),
                  static_cast<unsigned>(date.month()), yy);
    return buf;
}

std::string FormatTimeOfDay(int minutes) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%02d:%02d", minutes / 60, minutes % 60);
    return buf;
}

std::string FormatTime(DateTime moment) {
    return FormatTimeOfDay(MinutesOfDay(moment));
}

std::string FormatDateTime(DateTime moment) {
    const int secs = SecondsOfDay(moment);
    char buf[32];
    std::snprintf(buf, sizeof buf, " %02d:%02d:%02d", secs / 3600, secs / 60 % 60, secs % 60);
    return FormatDate(DateOf(moment)) + buf;
}

int ExpandTwoDigitYear(int yy) {
    return yy >= 51 ? 1900 + yy : 2000 + yy;
}

namespace {

// Reads a run of digits of length min..max at the front of text; advances text.
std::optional<int> TakeNumber(std::string_view& text, size_t min_digits, size_t max_digits) {
    size_t n = 0;
    while (n < text.size() && n < max_digits && text[n] >= '0' && text[n] <= '9') {
        ++n;
    }
    if (n < min_digits) {
        return std::nullopt;
    }
    int value = 0;
    std::from_chars(text.data(), text.data() + n, value);
    text.remove_prefix(n);
    return value;
}

bool IsDigitAt(std::string_view text, size_t at) {
    return text[at] >= '0' && text[at] <= '9';
}

// The digits text[at..at+count), known to be digits, as a number.
int NumberAt(std::string_view text, size_t at, size_t count) {
    int value = 0;
    for (size_t i = at; i < at + count; ++i) {
        value = value * 10 + (text[i] - '0');
    }
    return value;
}

bool TakeChar(std::string_view& text, char c) {
    if (text.empty() || text.front() != c) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

std::optional<Date> ValidDate(int day, int month, int year) {
    if (month < 1 || month > 12 || day < 1 || day > 31 || year < 1) {
        return std::nullopt;
    }
    const Date date = MakeDate(day, month, year);
    if (!date.ok()) {
        return std::nullopt;
    }
    return date;
}

std::optional<Date> TakeDate(std::string_view& text, char separator, bool two_digit_year_allowed) {
    const auto day = TakeNumber(text, 1, 2);
    if (!day || !TakeChar(text, separator)) {
        return std::nullopt;
    }
    const auto month = TakeNumber(text, 1, 2);
    if (!month || !TakeChar(text, separator)) {
        return std::nullopt;
    }
    const size_t before = text.size();
    auto year = TakeNumber(text, 2, 4);
    if (!year) {
        return std::nullopt;
    }
    const size_t digits = before - text.size();
    if (digits == 2 && two_digit_year_allowed) {
        year = ExpandTwoDigitYear(*year);
    } else if (digits != 4) {
        return std::nullopt;
    }
    return ValidDate(*day, *month, *year);
}

// "hh:mm" or "hh:mm:ss"; returns seconds since midnight.
std::optional<int> TakeTime(std::string_view& text, bool seconds_allowed) {
    const auto hour = TakeNumber(text, 1, 2);
    if (!hour || !TakeChar(text, ':')) {
        return std::nullopt;
    }
    const auto minute = TakeNumber(text, 2, 2);
    if (!minute || *hour > 23 || *minute > 59) {
        return std::nullopt;
    }
    int second = 0;
    if (seconds_allowed && TakeChar(text, ':')) {
        const auto s = TakeNumber(text, 2, 2);
        if (!s || *s > 59) {
            return std::nullopt;
        }
        second = *s;
    }
    return (*hour * 60 + *minute) * 60 + second;
}

}  // namespace

std::optional<Date> ParseDate(std::string_view text) {
    // The shape the program itself writes, read directly: every entry's date is read this way,
    // several times over at each start and change.
    if (text.size() == 10 && text[2] == '/' && text[5] == '/' && IsDigitAt(text, 0) && IsDigitAt(text, 1) &&
        IsDigitAt(text, 3) && IsDigitAt(text, 4) && IsDigitAt(text, 6) && IsDigitAt(text, 7) && IsDigitAt(text, 8) &&
        IsDigitAt(text, 9)) {
        return ValidDate(NumberAt(text, 0, 2), NumberAt(text, 3, 2), NumberAt(text, 6, 4));
    }
    auto date = TakeDate(text, '/', false);
    if (!date || !text.empty()) {
        return std::nullopt;
    }
    return date;
}

std::optional<Date> ParseWorkDate(std::string_view text) {
    auto date = TakeDate(text, '-', true);
    if (!date || !text.empty()) {
        return std::nullopt;
    }
    return date;
}

std::optional<int> ParseTimeOfDay(std::string_view text) {
    // "hh:mm" as the program writes it, read directly, as dates are above.
    if (text.size() == 5 && text[2] == ':' && IsDigitAt(text, 0) && IsDigitAt(text, 1) && IsDigitAt(text, 3) &&
        IsDigitAt(text, 4)) {
        const int hour = NumberAt(text, 0, 2);
        const int minute = NumberAt(text, 3, 2);
        return hour <= 23 && minute <= 59 ? std::optional<int>(hour * 60 + minute) : std::nullopt;
    }
    auto secs = TakeTime(text, false);
    if (!secs || !text.empty()) {
        return std::nullopt;
    }
    return *secs / 60;
}

std::optional<DateTime> ParseDateTime(std::string_view text) {
    const auto date = TakeDate(text, '/', false);
    if (!date) {
        return std::nullopt;
    }
    int secs = 0;
    if (TakeChar(text, ' ')) {
        const auto t = TakeTime(text, true);
        if (!t) {
            return std::nullopt;
        }
        secs = *t;
    }
    if (!text.empty()) {
        return std::nullopt;
    }
    return local_days{*date} + seconds{secs};
}

DateTime NeverScanned() {
    return MakeDateTime(MakeDate(1, 1, 1901));
}

}  // namespace vt
