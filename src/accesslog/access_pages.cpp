#include "accesslog/access_pages.h"

#include <cstdio>

#include "accesslog/html_text.h"
#include "calendar/month_names.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/shell_folders.h"
#include "platform/shell_open.h"
#include "store/text_file.h"
#include "workday/workday.h"

namespace vt {

namespace {

constexpr const char* kCrLf = "\r\n";

std::string TwoDigits(unsigned n) {
    char buf[16];
    std::snprintf(buf, sizeof buf, "%02u", n);
    return buf;
}

// "MARZO 2024"
std::string MonthTitle(Date date) {
    return MonthName(date, false, "") + " " + std::to_string(static_cast<int>(date.year()));
}

}  // namespace

std::string RutaLogAccesos(const AppPaths& paths, Date date, bool with_file) {
    (void)EnsureFolder(paths.LogFolder());
    std::string path = paths.LogFolder() + "/";
    if (with_file) {
        char year[16];
        std::snprintf(year, sizeof year, "%04d", static_cast<int>(date.year()));
        path += year;
        path += ".";
        path += TwoDigits(static_cast<unsigned>(date.month()));
        path += ".";
        path += MonthName(date, false, "");
        path += ".htm";
    }
    return path;
}

int DiasDelMes(Date date) {
    using namespace std::chrono;
    return static_cast<int>(
        static_cast<unsigned>(year_month_day_last{date.year(), month_day_last{date.month()}}.day()));
}

std::string EscribirCabeceraLog(Date date) {
    const std::string title = MonthTitle(date);
    std::string head;
    head += "<html><head><title>" + title + "</title></head>" + kCrLf;
    head += "<body style='font-family: Arial; font-size: 14px' vlink='#0000FF' alink='#0000FF' link='#0000FF'>";
    head += kCrLf;
    head += std::string("<p>") + kCrLf;
    head += "<b>" + title + "</b>" + kCrLf;
    head += std::string("</p>") + kCrLf;
    head += std::string("<p>") + kCrLf;
    const int last = DiasDelMes(date);
    for (int day = 1; day <= last; ++day) {
        const Date each =
            MakeDate(day, static_cast<int>(static_cast<unsigned>(date.month())), static_cast<int>(date.year()));
        const std::string dd = TwoDigits(static_cast<unsigned>(day));
        head += "<a href='#DIA" + dd + "'>" + dd + "</a> " + (WeekdayMonday1(each) == 7 ? "- -" : "|") + " " + kCrLf;
    }
    head += std::string("</p>") + kCrLf;
    return head;
}

std::string DayHeading(Date date) {
    const std::string dd = TwoDigits(static_cast<unsigned>(date.day()));
    return std::string("<hr>") + kCrLf + "<p><a name='DIA" + dd + "'></a><b>DIA " + dd + " (" + WeekdayName(date) +
           ")</b></p>" + kCrLf;
}

std::string FileHref(std::string_view path) {
    std::string href = !path.empty() && path.front() == '/' ? "file://" : "file:///";
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte >= 0x7F || c == '%' || c == '#' || c == '?') {
            char hex[4];
            std::snprintf(hex, sizeof hex, "%%%02X", byte);
            href += hex;
        } else {
            href += c;
        }
    }
    return href;
}

std::string AccessEntryLines(std::string_view time, std::string_view path) {
    std::string lines(time);
    lines += kCrLf;
    lines += " <a href='" + EscapeHtmlAttribute(FileHref(path), '\'') + "'>" + PathForPage(path) + "</a>";
    lines += kCrLf;
    lines += "<br>";
    lines += kCrLf;
    return lines;
}

void AbrirLogDeHoy(const AppPaths& paths, const Clock& clock, Dialogs& dialogs, ShellOpen& shell) {
    const std::string page = RutaLogAccesos(paths, Today(clock), true);
    if (!PathExists(page)) {
        dialogs.Inform("Aún no existe un LOG para hoy.");
        return;
    }
    (void)shell.Open(page, paths.AppFolder);
}

void AbrirCarpetaLogs(const AppPaths& paths, const Clock& clock, ShellOpen& shell) {
    (void)shell.Open(RutaLogAccesos(paths, Today(clock), false), paths.AppFolder);
}

void AbrirCarpetaRecientes(const AppPaths& paths, ShellFolders& folders, ShellOpen& shell, Dialogs& dialogs) {
    if (const std::string view = folders.RecentFilesView(); !view.empty()) {
        (void)shell.Open(view, paths.AppFolder);
        return;
    }
    std::string folder = folders.CarpetaEspecial(kRecentFolder);
    if (folder.empty()) {
        // Opening the bare separator, as a failed lookup would, shows the root of the disk.
        dialogs.Warn("No se encuentra la carpeta de archivos recientes.");
        return;
    }
    if (folder.back() != '/') {
        folder += '/';
    }
    (void)shell.Open(folder, paths.AppFolder);
}

}  // namespace vt
