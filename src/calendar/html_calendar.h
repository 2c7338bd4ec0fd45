#pragma once
// "Crear calendario": one printable HTML wall calendar per month of a date range, six weeks
// Monday first, with the agenda items of each day in its cell. The pages are written beside the
// executable in Windows-1252 (the charset they declare) with CR LF, and are not opened.

#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "calendar/range_collector.h"
#include "store/dates.h"
#include "store/entry_list.h"

namespace vt {

class Busy;
class Dialogs;

inline constexpr const char* kCalendarsDoneMessage = "Hecho!. Los calendarios están junto al ejecutable.";

// "calendario.03.2024.htm" for any day of March 2024.
std::string CalendarFileName(Date month);
// "MARZO.2024", or "MARTXOA.2024" for language "E".
std::string CalendarTitle(Date month, std::string_view language);
// "E" only for exactly "E"; every other answer is "C".
std::string CalendarLanguage(std::string_view answer);

// The page of the month that holds `month`, as UTF-8 text with CR LF. For each cell the items
// whose day is the cell's are written in list order: a priority item underlined and bold, an
// item whose text begins with "-" left out, anniversary years counted to the cell's year, all
// text escaped for HTML.
std::string CalendarPage(Date month, const std::vector<std::string>& items, std::string_view language);

struct PageFailure {
    std::string path;
    std::error_code error;
};

// The paths written and the pages that could not be, each in month order.
struct WrittenPages {
    std::vector<std::string> written;
    std::vector<PageFailure> failed;
};

// Writes the page of every month from range.first to range.last into `folder` (which ends with
// its separator), replacing pages of the same name. A page that cannot be written does not stop
// the others.
WrittenPages WriteCalendarPages(const std::string& folder, const CollectedRange& collected, std::string_view language);

// "No se ha podido escribir el calendario <path> (<cause>)." for the first failed page, with
// the count of the others after it; empty when there is none.
std::string CalendarFailureMessage(const std::vector<PageFailure>& failed);

// The menu action: the range (cancel writes nothing and shows nothing), the language asked with
// "Idioma (C/E):", the pages written while the busy state is on, then the closing message, or,
// when a page could not be written, the message that names it instead.
void CreateCalendars(Dialogs& dialogs, Busy& busy, const std::string& app_folder, Date today, const EntryList& alarms,
                     const EntryList& repetitions);

}  // namespace vt
