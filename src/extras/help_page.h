#pragma once
// The help page. Help is not shipped as a file: the page is written afresh from the texts the
// program holds every time it is asked for, so it always matches the program that wrote it,
// and then handed to the desktop's viewer.

#include <string>
#include <string_view>

#include "store/app_paths.h"

namespace vt {

class Dialogs;
class ShellOpen;

// AppFolder + "Ayuda_" + base name + ".htm", e.g. ".../Ayuda_VendrakoTimer.htm".
std::string HelpFilePath(const AppPaths& paths);

// Adds one paragraph to the page, as one line: the text trimmed and escaped, then "<br><br>";
// in "<b>" when bold, and that in "<u>" when underlined.
void EscribirParrafoAyuda(std::string_view text, std::string& page, bool bold, bool underline);

// The whole page in UTF-8, lines ended with "\r\n". The file holds it in Windows-1252.
std::string HelpPageText(std::string_view exe_base_name);

// Writes the help file over whatever an earlier run left there (a read-only file too) and opens
// it. When the file cannot be written the user is told so and nothing is opened; false then.
bool GenerarAyuda(const AppPaths& paths, ShellOpen& shell, Dialogs& dialogs);

}  // namespace vt
