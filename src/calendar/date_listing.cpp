#include "calendar/date_listing.h"

#include <string_view>

#include "agenda/text_marks.h"
#include "platform/dialogs.h"
#include "platform/shell_open.h"
#include "store/cp1252.h"
#include "store/text_file.h"
#include "workday/workday.h"

namespace vt {

std::string DateListingText(const CollectedRange& collected) {
    std::string text =
        "Listado del " + FormatDate(collected.range.first) + " al " + FormatDate(collected.range.last) + "\r\n";
    std::string_view current_day;
    for (const std::string& item : collected.items) {
        const ItemParts parts = SplitItem(item);
        const auto day = ParseDate(parts.day);
        if (!day) {
            continue;
        }
        if (parts.day != current_day) {
            current_day = parts.day;
            text += "\r\n" + WeekdayName(*day) + " " + std::string(parts.day) + "\r\n";
        }
        text += parts.priority ? "! " : "  ";
        text += AnniversaryText(parts.text, static_cast<int>(day->year()));
        text += "\r\n";
    }
    return text;
}

bool WriteDateListing(const std::string& path, const CollectedRange& collected) {
    return !WriteFileAtomically(path, Utf8ToCp1252(DateListingText(collected)));
}

void ListDates(Dialogs& dialogs, ShellOpen& shell, const std::string& app_folder, Date today, const EntryList& alarms,
               const EntryList& repetitions) {
    const auto collected = CollectRange(dialogs, "Listado por fechas", today, alarms, repetitions);
    if (!collected) {
        return;
    }
    const std::string path = app_folder + kListingFileName;
    if (!WriteDateListing(path, *collected)) {
        dialogs.Warn("No se pudo escribir " + path);
        return;
    }
    shell.Open(path, app_folder);
}

}  // namespace vt
