#pragma once
// "Listado por fechas": the agenda items of a range of dates as a plain text file,
// "Listado.txt" beside the executable, opened with the desktop's viewer once written.
//
//   Listado del 01/03/2024 al 31/03/2024
//   (empty line)
//   Viernes 01/03/2024
//     text of an item
//   ! text of a priority item
//   (empty line before the next day)
//
// Entries hidden from the calendars ("-") are listed: the listing is not a calendar.

#include <string>

#include "calendar/range_collector.h"
#include "store/dates.h"
#include "store/entry_list.h"

namespace vt {

class Dialogs;
class ShellOpen;

inline constexpr const char* kListingFileName = "Listado.txt";

// The listing as UTF-8 text with CR LF: the title line with the range, then for each day that
// has items an empty line, its heading (weekday name and date) and one line per item in the
// collector's order, "! " before a priority item and two blanks before any other, anniversary
// years counted to the item's year.
std::string DateListingText(const CollectedRange& collected);

// Writes the listing in Windows-1252 to `path`; false when it could not be written.
bool WriteDateListing(const std::string& path, const CollectedRange& collected);

// The menu action: the range (cancel writes nothing and shows nothing), then the file, then the
// viewer. The path of the file is app_folder + "Listado.txt".
void ListDates(Dialogs& dialogs, ShellOpen& shell, const std::string& app_folder, Date today, const EntryList& alarms,
               const EntryList& repetitions);

}  // namespace vt
