#pragma once
// The date range that both the wall calendars and the listing by dates are built from: two
// dates asked of the user, widened to whole months, and every agenda item that falls on a day
// of it, day by day.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/dates.h"
#include "store/entry_list.h"

namespace vt {

class Dialogs;

inline constexpr const char* kStartDatePrompt = "Fecha inicial (ddmmyy):";
inline constexpr const char* kEndDatePrompt = "Fecha final (ddmmyy):";
inline constexpr const char* kEndBeforeStartMessage = "La fecha final no puede ser anterior a la fecha inicial.";

struct DateRange {
    Date first;  // the 1st of the start month
    Date last;   // the last day of the end month
    friend bool operator==(const DateRange&, const DateRange&) = default;
};

// One item per entry and day: the day "dd/mm/yyyy", then "!" for a priority alarm or nothing,
// then the text (an alarm's without its start-date tag).
struct CollectedRange {
    DateRange range;
    std::vector<std::string> items;
};

DateRange WidenToMonths(Date start, Date end);

// The items of every day from range.first to range.last, in day order; within a day the
// repetitions come first, then the alarms, each in list order. An alarm is placed on its stored
// date and, when it repeats by months or years or by a number of days other than 1 and 7, on
// every later date its repetition reaches within the range (stepped as the stored dates are,
// so a month step from the 31st drifts to the 28th as the alarm itself will). Daily and weekly
// alarms would fill every page, so they show only on their stored date. An alarm with a start
// date shows only from that date on. Entries whose date does not read are passed over, and so
// is a repetition unit the program does not know (that alarm shows on its stored date only).
std::vector<std::string> CollectRangeItems(const DateRange& range, const EntryList& alarms,
                                           const EntryList& repetitions, Dialogs& dialogs);

// The day of an item, its priority mark and its text, as the pages and the listing read them.
struct ItemParts {
    std::string_view day;  // "dd/mm/yyyy"
    bool priority = false;
    std::string_view text;
};
ItemParts SplitItem(std::string_view item);

// Asks for a date in an input box until it reads ("ddmmyy", refused with the usual format
// message) or the user cancels (nothing).
std::optional<Date> AskDate(Dialogs& dialogs, const std::string& prompt, const std::string& title,
                            const std::string& initial);

// Asks for the start and the end date (an end before the start is refused and asked again) and
// collects the widened range. Nothing when the user cancels either box; nothing is shown then.
// `today` gives the start box its initial text.
std::optional<CollectedRange> CollectRange(Dialogs& dialogs, const std::string& title, Date today,
                                           const EntryList& alarms, const EntryList& repetitions);

}  // namespace vt
