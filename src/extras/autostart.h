#pragma once
// "Arrancar al iniciar Windows": after a confirmation, the program leaves an entry that starts
// it with the user's session. There is no removal; the user deletes the entry by hand.

#include <string>
#include <string_view>

#include "store/app_paths.h"

namespace vt {

class Dialogs;
class ShellFolders;

inline constexpr std::string_view kAutostartQuestion = "¿Desea que el programa se arranque al iniciar Windows?";

// How the entry is made on this system: a desktop entry on a freedesktop desktop, a shortcut
// file on Windows.
class StartupEntryMaker {
public:
    virtual ~StartupEntryMaker() = default;
    // The entry's file name in the startup folder for an executable of that base name.
    virtual std::string EntryFileName(std::string_view exe_base_name) const = 0;
    // Makes (or replaces) entry_path so that it starts target; false when it cannot be written.
    virtual bool Make(const std::string& entry_path, std::string_view exe_base_name, const std::string& target) = 0;
};

// The executable as a desktop-entry Exec value: quoted when it holds a reserved character, with
// the quoting escapes and then the string escapes applied, "%" doubled.
std::string DesktopExecValue(std::string_view path);

// The autostart desktop entry's text for the executable (UTF-8, "\n" line ends, as desktops
// read these files).
std::string AutostartEntryText(std::string_view exe_base_name, std::string_view target);

// The freedesktop form: "<base name>.desktop" holding AutostartEntryText. The folder is made
// when it is missing, since a fresh account has no autostart folder yet.
class DesktopEntryMaker : public StartupEntryMaker {
public:
    std::string EntryFileName(std::string_view exe_base_name) const override;
    bool Make(const std::string& entry_path, std::string_view exe_base_name, const std::string& target) override;
};

// Asks, and on OK makes the entry for AppFolder + ExeBaseName in startup folder 7. Silent
// whatever happens afterwards: nothing is made when the executable is not there, or when the
// desktop has no startup folder.
void CrearAccesoInicio(const AppPaths& paths, Dialogs& dialogs, ShellFolders& folders, StartupEntryMaker& maker);

}  // namespace vt
