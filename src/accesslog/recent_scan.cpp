#include "accesslog/recent_scan.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "accesslog/access_pages.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/recent_files.h"
#include "store/busy.h"
#include "store/cp1252.h"
#include "store/error_text.h"
#include "store/ini_file.h"
#include "store/sorted_list.h"
#include "store/text_file.h"

namespace vt {

namespace {

// A scan entry is "yyyy/mm/dd hh:mm:ss" + "  " + path, so that plain text order is time order
// and sorting the entries needs nothing but the text. Both directions are rearrangements of
// the program's one date-time format, "dd/mm/yyyy hh:mm:ss".
constexpr std::size_t kStampLength = 19;
constexpr std::size_t kPathStart = kStampLength + 2;

std::string SortableStamp(DateTime moment) {
    const std::string s = FormatDateTime(moment);  // "dd/mm/yyyy hh:mm:ss"
    return s.substr(6, 4) + "/" + s.substr(3, 2) + "/" + s.substr(0, 2) + s.substr(10);
}

// "dd/mm/yyyy" of an entry.
std::string EntryDay(std::string_view entry) {
    return std::string(entry.substr(8, 2)) + "/" + std::string(entry.substr(5, 2)) + "/" +
           std::string(entry.substr(0, 4));
}

bool IsSkippedName(std::string_view name) {
    const std::string upper = UpperCaseForList(name);
    return upper == "THUMBS.DB" || upper == "DESKTOP.INI";
}

std::string FutureWarning(std::string_view path, DateTime modified) {
    return "Se ha detectado un acceso a un fichero posterior al día de hoy:\r\n\r\n" + std::string(path) + "\r\n\r\n" +
           FormatDateTime(modified);
}

std::string WriteFailure(const std::string& page, std::error_code error) {
    return "No se ha podido escribir en el registro de accesos:\r\n\r\n" + page + "\r\n\r\n(" + ErrorText(error) +
           ")\r\n\r\nLa revisión de archivos recientes se ha detenido y se repetirá en la próxima.";
}

// Appends to the page of date's month. A new page (or an empty one) is created whole, its head
// with the text, by write-and-rename: a full disk then leaves no page at all rather than one
// without its head, to which every later run would append.
std::error_code AppendToPage(const AppPaths& paths, Date date, const std::string& text, std::string& page) {
    page = RutaLogAccesos(paths, date, true);
    // One look at the file per entry: missing, unreadable and empty all mean "new".
    std::error_code no_size;
    const std::uintmax_t size = std::filesystem::file_size(page, no_size);
    if (no_size || size == 0) {
        return WriteFileAtomically(page, Utf8ToCp1252(EscribirCabeceraLog(date) + text));
    }
    return AppendToFile(page, Utf8ToCp1252(text));
}

}  // namespace

ScanOutcome TratarArchivosRecientes(const AppPaths& paths, Settings& settings, const Clock& clock, Dialogs& dialogs,
                                    Busy& busy, RecentFiles& recent) {
    BusyScope hourglass(busy);
    const DateTime inicio = clock.Now();

    const RecentListing listing = recent.List();
    if (listing.outcome == RecentListingOutcome::NoSource) {
        return ScanOutcome::NoSource;
    }
    if (listing.outcome == RecentListingOutcome::Failed) {
        // Once per damage, not every five minutes: the run stops either way.
        if (!listing.told_before) {
            dialogs.Warn(listing.error);
        }
        return ScanOutcome::Stopped;
    }

    const DateTime tomorrow = MakeDateTime(AddDays(DateOf(inicio), 1));
    std::vector<std::string> entries(1);  // slot 0 unused
    for (const RecentFile& file : listing.files) {
        if (file.vanished || IsSkippedName(file.name) || file.modified < settings.UltimoAcceso) {
            continue;
        }
        const std::string& path = file.target.empty() ? file.link_path : file.target;
        if (file.modified >= tomorrow) {
            // Not remembered: the warning comes back at every run until the clock passes it.
            dialogs.Warn(FutureWarning(path, file.modified));
            continue;
        }
        AgregarALista(entries, SortableStamp(file.modified) + "  " + path, true, true, false);
    }

    std::string dia_anterior = FormatDate(DateOf(settings.UltimoAcceso));
    bool escrito_dia = false;
    for (std::size_t i = 1; i < entries.size(); ++i) {
        const std::string_view entry = entries[i];
        const std::string dia = EntryDay(entry);
        const Date date = *ParseDate(dia);  // built from a formatted date, so always one
        std::string text;
        if (dia != dia_anterior) {
            text += DayHeading(date);
            escrito_dia = true;
        }
        text += AccessEntryLines(entry.substr(11, 8), entry.substr(kPathStart));
        std::string page;
        if (const std::error_code error = AppendToPage(paths, date, text, page)) {
            dialogs.Warn(WriteFailure(page, error));
            return ScanOutcome::Stopped;
        }
        dia_anterior = dia;
    }

    // The first run of a day opens the day in the log even when nothing was used; only when this
    // run wrote no heading at all, so a run that crossed midnight with entries adds none.
    const Date today = DateOf(inicio);
    if (!escrito_dia && FormatDate(today) != FormatDate(DateOf(settings.UltimoAcceso))) {
        std::string page;
        if (const std::error_code error = AppendToPage(paths, today, DayHeading(today), page)) {
            dialogs.Warn(WriteFailure(page, error));
            return ScanOutcome::Stopped;
        }
    }

    // The start, not the end, of the run: files used while it ran are taken again next time.
    settings.UltimoAcceso = inicio;
    WriteIniValue(paths.SettingsFile(), "ACCESOS", "ULTIMO", FormatDateTime(inicio));
    return ScanOutcome::Logged;
}

}  // namespace vt
