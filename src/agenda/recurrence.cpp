#include "agenda/recurrence.h"

#include <string>

#include "agenda/entries.h"

namespace vt {

namespace {

enum class Interval { Days, Months, Years, Unknown };

Interval IntervalOf(std::string_view unit) {
    if (unit == "D") {
        return Interval::Days;
    }
    if (unit == "M") {
        return Interval::Months;
    }
    if (unit == "A") {
        return Interval::Years;
    }
    return Interval::Unknown;
}

// The date `amount` intervals away, or nothing outside the years 1..9999. The bounds are checked
// before any arithmetic, so a huge count cannot overflow.
std::optional<Date> Shift(Date date, Interval interval, long long amount) {
    constexpr long long kYears = 10000;
    Date shifted{};
    switch (interval) {
        case Interval::Days:
            if (amount < -kYears * 366 || amount > kYears * 366) {
                return std::nullopt;
            }
            shifted = AddDays(date, static_cast<int>(amount));
            break;
        case Interval::Months:
            if (amount < -kYears * 12 || amount > kYears * 12) {
                return std::nullopt;
            }
            shifted = AddMonths(date, static_cast<int>(amount));
            break;
        case Interval::Years:
            if (amount < -kYears || amount > kYears) {
                return std::nullopt;
            }
            shifted = AddYears(date, static_cast<int>(amount));
            break;
        case Interval::Unknown:
            return std::nullopt;
    }
    const int year = static_cast<int>(shifted.year());
    if (year < 1 || year > 9999) {
        return std::nullopt;
    }
    return shifted;
}

}  // namespace

std::optional<Date> NextOccurrence(Date& date, int count, std::string_view unit, Date from, Date to, int step,
                                   bool skip_today, Date today, Dialogs& dialogs) {
    if (!date.ok()) {
        return std::nullopt;
    }
    const int direction = step > 0 ? 1 : (step < 0 ? -1 : 0);
    const bool working_days_only = unit == "D" && count == 1;
    const long long amount = static_cast<long long>(direction) * count;
    for (;;) {
        const Date d = date;
        const bool skipped = (skip_today && d == today) || (working_days_only && WeekdayMonday1(d) >= 6);
        if (!skipped) {
            if (from <= d && d <= to) {
                return d;
            }
            if ((direction > 0 && d > to) || (direction < 0 && d < from)) {
                return std::nullopt;
            }
        }
        const Interval interval = IntervalOf(unit);
        if (interval == Interval::Unknown) {
            dialogs.Warn("MAL!");
            return std::nullopt;
        }
        // Where the date would stand still, or walk away from the range for good, the search
        // could only end by running off the calendar; it ends here instead.
        if (amount == 0 || (direction > 0 && d < from && amount < 0) || (direction < 0 && d > to && amount > 0)) {
            return std::nullopt;
        }
        const auto next = Shift(d, interval, amount);
        if (!next) {
            return std::nullopt;
        }
        date = *next;
    }
}

void AdvanceStoredAlarmDates(EntryList& alarms, Date today, Dialogs& dialogs) {
    for (int i = 1; i <= alarms.Count(); ++i) {
        const AlarmParts alarm = ReadAlarm(alarms[i]);
        if (!alarm.Readable()) {
            continue;
        }
        Date date = *alarm.date;
        const auto next = NextOccurrence(date, *alarm.count, alarm.unit, today, kOpenEnd, 1, true, today, dialogs);
        if (!next) {
            continue;
        }
        alarms[i] = BuildAlarmEntry(FormatDate(*next), alarm.time, *alarm.count, alarm.unit, *alarm.notice_days,
                                    alarm.priority, alarm.text);
    }
    SortAlarms(alarms);
}

}  // namespace vt
