#pragma once
// The monthly access pages in the "LOG" folder: one HTML page per month, named
// "2024.03.MARZO.htm", appended to by the recent-files scan and never rewritten. The texts here
// are UTF-8 with CR LF line ends; they are converted to Windows-1252 as they are appended.

#include <string>
#include <string_view>

#include "store/app_paths.h"
#include "store/dates.h"

namespace vt {

class Clock;
class Dialogs;
class ShellOpen;
class ShellFolders;

// The "LOG" folder with the separator at the end, or with_file: the page of date's month.
// Creates the folder when it is missing (a failure shows later, when the page is written).
std::string RutaLogAccesos(const AppPaths& paths, Date date, bool with_file);

// The last day of date's month, 28 to 31.
int DiasDelMes(Date date);

// The head of a new page for date's month: title, heading and the index of its days, each day
// a link followed by "|", or by "- -" after a Sunday.
std::string EscribirCabeceraLog(Date date);

// "<hr>" and the heading of a day, which the index links to: "DIA 05 (Martes)".
std::string DayHeading(Date date);

// The three lines of one access: the time "hh:mm:ss", the link to the path, "<br>".
std::string AccessEntryLines(std::string_view time, std::string_view path);

// The link's address: "file://" + an absolute path ("/home/…" gives "file:///home/…"), else
// "file:///" + the path (a Windows path "C:\…" gives "file:///C:\…"). What would end or bend the
// address is percent-encoded: "%", "#", "?", control characters, and every byte of a character
// beyond ASCII (its UTF-8 bytes, as browsers read a file address); the rest is kept as it is.
std::string FileHref(std::string_view path);

// "Accesos Hoy" and the tray's "Accesos de hoy": opens this month's page, or tells the user
// that there is none yet ("Aún no existe un LOG para hoy.") and creates nothing.
void AbrirLogDeHoy(const AppPaths& paths, const Clock& clock, Dialogs& dialogs, ShellOpen& shell);

// "Carpeta Logs de Accesos": opens the "LOG" folder (creating it when missing).
void AbrirCarpetaLogs(const AppPaths& paths, const Clock& clock, ShellOpen& shell);

// "Carpeta Archivos Recientes": the desktop's own view of the recent files when it has one,
// else the Recent folder; when the desktop has neither, the user is told.
void AbrirCarpetaRecientes(const AppPaths& paths, ShellFolders& folders, ShellOpen& shell, Dialogs& dialogs);

}  // namespace vt
