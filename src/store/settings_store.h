#pragma once
#include <string>
#include <string_view>

#include "store/app_paths.h"
#include "store/app_state.h"

namespace vt {

class Busy;
class Dialogs;

// Fills settings from the settings file, parsing it once. A missing file gives the defaults.
// Returns false, after telling the user, when the file cannot be read or its alarm count does
// not match its alarms; the program must then end without saving anything.
bool LoadSettings(const std::string& settings_file, Settings& settings, Dialogs& dialogs);

// The part of LoadSettings that comes after reading the file: bytes are the file as stored.
// Same result and messages, without touching the disk.
bool LoadSettingsFromBytes(std::string_view bytes, Settings& settings, Dialogs& dialogs);

// Rewrites the settings file from memory: the previous file goes to a backup slot first, the
// new one is built whole and replaces the old one atomically. On failure the user is told,
// the previous file stays as it was, and false is returned.
bool SaveSettings(const AppPaths& paths, const Settings& settings, Busy& busy, Dialogs& dialogs);

// The exact text (UTF-8 in memory) that SaveSettings writes, before conversion to Windows-1252.
std::string SettingsFileText(const Settings& settings);

}  // namespace vt
