#include "calendar/range_collector.h"

#include <chrono>
#include <cstddef>

#include "agenda/entries.h"
#include "agenda/recurrence.h"
#include "platform/dialogs.h"
#include "store/entry_rules.h"

namespace vt {
namespace {

// "ddmmyy", the form the date boxes start with.
std::string ShortForm(Date date) {
    const std::string full = FormatDate(date);  // dd/mm/yyyy
    return full.substr(0, 2) + full.substr(3, 2) + full.substr(8, 2);
}

bool ProjectedThroughRange(int count, std::string_view unit) {
    if (count <= 0) {
        return false;
    }
    if (unit == "D") {
        return count != 1 && count != 7;
    }
    return unit == "M" || unit == "A";
}

}  // namespace

DateRange WidenToMonths(Date start, Date end) {
    const Date first = start.year() / start.month() / std::chrono::day{1};
    const Date last{end.year() / end.month() / std::chrono::last};
    return {first, last};
}

std::vector<std::string> CollectRangeItems(const DateRange& range, const EntryList& alarms,
                                           const EntryList& repetitions, Dialogs& dialogs) {
    using std::chrono::sys_days;
    if (!range.first.ok() || !range.last.ok() || range.last < range.first) {
        return {};
    }
    const auto first_day = sys_days{range.first};
    const auto days = static_cast<std::size_t>((sys_days{range.last} - first_day).count()) + 1;
    std::vector<std::vector<std::string>> by_day(days);
    const auto place = [&](Date date, bool priority, std::string_view text) {
        if (date < range.first || range.last < date) {
            return;
        }
        std::string item = FormatDate(date);
        if (priority) {
            item += '!';
        }
        item += text;
        by_day[static_cast<std::size_t>((sys_days{date} - first_day).count())].push_back(std::move(item));
    };

    for (const std::string& entry : repetitions) {
        const auto moment = RepetitionMoment(entry);
        if (moment) {
            place(DateOf(*moment), false, GetRepetitionField(entry, 6));
        }
    }

    for (const std::string& entry : alarms) {
        const auto stored = AlarmDate(entry);
        if (!stored) {
            continue;
        }
        const bool priority = GetAlarmField(entry, 9) == "1";
        const std::string text = GetAlarmField(entry, 11);
        const std::string unit = GetAlarmField(entry, 3);
        const int count = AlarmCount(entry).value_or(0);
        const auto place_if_active = [&](Date date) {
            if (AlarmActiveOn(date, entry)) {
                place(date, priority, text);
            }
        };
        if (!ProjectedThroughRange(count, unit)) {
            place_if_active(*stored);
            continue;
        }
        Date walker = *stored;
        Date from = range.first;
        while (from <= range.last) {
            const auto next = NextOccurrence(walker, count, unit, from, range.last, 1, false, range.first, dialogs);
            if (!next) {
                break;
            }
            place_if_active(*next);
            from = AddDays(*next, 1);
        }
    }

    std::vector<std::string> items;
    for (auto& day : by_day) {
        for (auto& item : day) {
            items.push_back(std::move(item));
        }
    }
    return items;
}

ItemParts SplitItem(std::string_view item) {
    ItemParts parts;
    parts.day = item.substr(0, 10);
    std::string_view rest = item.size() > 10 ? item.substr(10) : std::string_view{};
    if (!rest.empty() && rest.front() == '!') {
        parts.priority = true;
        rest.remove_prefix(1);
    }
    parts.text = rest;
    return parts;
}

std::optional<Date> AskDate(Dialogs& dialogs, const std::string& prompt, const std::string& title,
                            const std::string& initial) {
    for (;;) {
        const auto typed = dialogs.Ask({prompt, title, initial});
        if (!typed) {
            return std::nullopt;
        }
        const std::string converted = ParseDdmmyy(*typed, dialogs);
        if (converted.empty()) {
            continue;
        }
        if (const auto date = ParseDate(converted)) {
            return date;
        }
    }
}

std::optional<CollectedRange> CollectRange(Dialogs& dialogs, const std::string& title, Date today,
                                           const EntryList& alarms, const EntryList& repetitions) {
    const auto start = AskDate(dialogs, kStartDatePrompt, title, ShortForm(today));
    if (!start) {
        return std::nullopt;
    }
    std::optional<Date> end;
    for (;;) {
        end = AskDate(dialogs, kEndDatePrompt, title, ShortForm(*start));
        if (!end) {
            return std::nullopt;
        }
        if (!(*end < *start)) {
            break;
        }
        dialogs.Warn(kEndBeforeStartMessage);
    }
    CollectedRange collected;
    collected.range = WidenToMonths(*start, *end);
    collected.items = CollectRangeItems(collected.range, alarms, repetitions, dialogs);
    return collected;
}

}  // namespace vt
