#include "calendar/html_calendar.h"

#include <chrono>
#include <cstdio>
#include <unordered_map>

#include "accesslog/html_text.h"
#include "agenda/text_marks.h"
#include "calendar/month_names.h"
#include "platform/dialogs.h"
#include "store/busy.h"
#include "store/cp1252.h"
#include "store/error_text.h"
#include "store/text_file.h"

namespace vt {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

// The items of each day, by their "dd/mm/yyyy", so that a cell does not scan the whole list.
using ItemsByDay = std::unordered_map<std::string_view, std::vector<const std::string*>>;

ItemsByDay IndexByDay(const std::vector<std::string>& items) {
    ItemsByDay index;
    for (const std::string& item : items) {
        if (item.size() >= 10) {
            index[std::string_view(item).substr(0, 10)].push_back(&item);
        }
    }
    return index;
}

int YearOf(Date date) {
    return static_cast<int>(date.year());
}

std::string TwoDigits(unsigned value) {
    char buffer[8];
    std::snprintf(buffer, sizeof buffer, "%02u", value % 100);
    return buffer;
}

void AppendLine(std::string& page, std::string_view line) {
    page += line;
    page += kLineEnd;
}

void AppendHead(std::string& page, const std::string& title) {
    static constexpr std::string_view kStyleLines[] = {"<style type='text/css'>",
                                                       "table {",
                                                       " font-family: arial; ",
                                                       " font-size: 40pt;",
                                                       " font-weight: bold;",
                                                       " color: #000000;",
                                                       "}",
                                                       ".otromes {",
                                                       " color: #aaaaaa;",
                                                       " font-size: 40pt;",
                                                       "}",
                                                       ".mes {",
                                                       " font-size: 20pt;",
                                                       "}",
                                                       ".cumple {",
                                                       " color: #000000;",
                                                       " font-size: 9pt;",
                                                       " font-weight: normal;",
                                                       "}",
                                                       "</style>"};
    AppendLine(page, "<html>");
    AppendLine(page, "<head>");
    AppendLine(page, "<meta http-equiv='Content-Language' content='es'>");
    AppendLine(page, "<meta http-equiv='Content-Type' content='text/html; charset=windows-1252'>");
    AppendLine(page, "<title>" + title + "</title>");
    for (std::string_view line : kStyleLines) {
        AppendLine(page, line);
    }
    AppendLine(page, "</head>");
    AppendLine(page, "<body topmargin='10' leftmargin='10'>");
    AppendLine(page,
               "<table border='1' width='100%' cellspacing='0' cellpadding='0' bordercolorlight='#000000' "
               "bordercolordark='#FFFFFF' bordercolor='#FFFFFF' height='100%'>");
    AppendLine(page, " <tr>");
    AppendLine(page, "  <td width='100%' align='center' valign='top' colspan='7' class='mes'>" + title + "</td>");
    AppendLine(page, " </tr>");
}

std::string CellEntries(Date day, const ItemsByDay& index) {
    const std::string key = FormatDate(day);
    const auto found = index.find(key);
    if (found == index.end()) {
        return {};
    }
    std::string text;
    bool any = false;
    for (const std::string* item : found->second) {
        const ItemParts parts = SplitItem(*item);
        if (!parts.text.empty() && parts.text.front() == '-') {
            continue;
        }
        text += any ? "</br>" : "</br><div class='cumple'>";
        any = true;
        if (parts.priority) {
            text += "<u><b>";
        }
        text += EscapeHtmlText(AnniversaryText(parts.text, YearOf(day)));
        if (parts.priority) {
            text += "</b></u>";
        }
    }
    if (any) {
        text += "</div>";
    }
    return text;
}

std::string PageOf(Date month, const ItemsByDay& index, std::string_view language) {
    const Date first = month.year() / month.month() / std::chrono::day{1};
    Date day = AddDays(first, 1 - WeekdayMonday1(first));
    std::string page;
    page.reserve(8192);
    AppendHead(page, EscapeHtmlText(CalendarTitle(month, language)));
    for (int row = 0; row < 6; ++row) {
        AppendLine(page, " <tr>");
        for (int column = 0; column < 7; ++column) {
            std::string cell = "  <td width='14%' align='left' valign='top' height='16%'";
            if (column >= 5) {
                cell += " bgcolor='#C0C0C0'";
            }
            if (day.month() != first.month() || day.year() != first.year()) {
                cell += " class='otromes'";
            }
            cell += '>';
            cell += TwoDigits(static_cast<unsigned>(day.day()));
            cell += CellEntries(day, index);
            cell += "</td>";
            AppendLine(page, cell);
            day = AddDays(day, 1);
        }
        AppendLine(page, " </tr>");
    }
    AppendLine(page, "</table>");
    AppendLine(page, "</body>");
    AppendLine(page, "</html>");
    return page;
}

}  // namespace

std::string CalendarFileName(Date month) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "calendario.%02u.%04d.htm", static_cast<unsigned>(month.month()),
                  YearOf(month));
    return buffer;
}

std::string CalendarTitle(Date month, std::string_view language) {
    char year[8];
    std::snprintf(year, sizeof year, "%04d", YearOf(month));
    return MonthName(month, false, language) + "." + year;
}

std::string CalendarLanguage(std::string_view answer) {
    return answer == "E" ? "E" : "C";
}

std::string CalendarPage(Date month, const std::vector<std::string>& items, std::string_view language) {
    return PageOf(month, IndexByDay(items), language);
}

WrittenPages WriteCalendarPages(const std::string& folder, const CollectedRange& collected, std::string_view language) {
    const ItemsByDay index = IndexByDay(collected.items);
    WrittenPages pages;
    const DateRange& range = collected.range;
    for (Date month = range.first.year() / range.first.month() / std::chrono::day{1}; month <= range.last && month.ok();
         month = AddMonths(month, 1)) {
        std::string path = folder + CalendarFileName(month);
        // One page in the way (a folder of that name, a file held open) says nothing about the
        // others, which are still worth having.
        if (const std::error_code error = WriteFileAtomically(path, Utf8ToCp1252(PageOf(month, index, language)))) {
            pages.failed.push_back({std::move(path), error});
        } else {
            pages.written.push_back(std::move(path));
        }
    }
    return pages;
}

std::string CalendarFailureMessage(const std::vector<PageFailure>& failed) {
    if (failed.empty()) {
        return {};
    }
    std::string message =
        "No se ha podido escribir el calendario " + failed.front().path + " (" + ErrorText(failed.front().error) + ")";
    if (failed.size() == 2) {
        message += " ni otro más";
    } else if (failed.size() > 2) {
        message += " ni otros " + std::to_string(failed.size() - 1) + " más";
    }
    return message + ".";
}

void CreateCalendars(Dialogs& dialogs, Busy& busy, const std::string& app_folder, Date today, const EntryList& alarms,
                     const EntryList& repetitions) {
    std::optional<CollectedRange> collected;
    std::vector<PageFailure> failed;
    {
        BusyScope scope(busy);
        collected = CollectRange(dialogs, "Crear calendario", today, alarms, repetitions);
        if (!collected) {
            return;
        }
        const auto answer = dialogs.Ask({"Idioma (C/E):", "Idioma", "C"});
        failed = WriteCalendarPages(app_folder, *collected, CalendarLanguage(answer.value_or("C"))).failed;
    }
    // "Hecho!" only when every page is there: a missing month found at the printer is worse
    // than a message now.
    if (failed.empty()) {
        dialogs.Inform(kCalendarsDoneMessage);
    } else {
        dialogs.Warn(CalendarFailureMessage(failed));
    }
}

}  // namespace vt
