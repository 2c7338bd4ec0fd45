#pragma once
#include <string>
#include <string_view>

#include "store/app_paths.h"
#include "store/app_state.h"

namespace vt {

class Busy;
class Dialogs;
class SettingsReadAhead;

// Fills settings from the settings file, parsing it once. A missing file gives the defaults.
// A file that holds something but none of the program's sections (garbage, UTF-16 without its
// mark) is copied beside itself as "<file>.dañado-<yyyymmdd-hhmmss>" (now), the user is told
// where, and the defaults are loaded. Returns false, after telling the user, when the file
// cannot be read, a damaged one cannot be copied, or its alarm count does not match its
// alarms; the program must then end without saving anything.
// read_ahead, when given, is taken instead of parsing the same bytes again.
bool LoadSettings(const std::string& settings_file, Settings& settings, Dialogs& dialogs, DateTime now,
                  SettingsReadAhead* read_ahead = nullptr);

// The part of LoadSettings that comes after reading the file: bytes are the file as stored.
// Same result and messages, without touching the disk.
bool LoadSettingsFromBytes(std::string_view bytes, Settings& settings, Dialogs& dialogs);

// Rewrites the settings file from memory: the previous file goes to a backup slot first, the
// new one is built whole and replaces the old one atomically. A backup that cannot be made is
// told once per run (status) and the save goes on. When the file itself cannot be written the
// previous file stays as it was, false is returned and status.SavePending is set: the user is
// told at the first failure only, and the retries that follow copy the old version no more.
// read_back, when given, parses the new file while it is being written, for the LoadSettings
// that reads it back.
bool SaveSettings(const AppPaths& paths, const Settings& settings, Busy& busy, Dialogs& dialogs, StoreStatus& status,
                  SettingsReadAhead* read_back = nullptr);
// The same with a status of its own, so every failure is told.
bool SaveSettings(const AppPaths& paths, const Settings& settings, Busy& busy, Dialogs& dialogs);

// The key an entry is stored under: the prefix and its number in at least three digits, as
// "ALA_007".
std::string EntryKey(std::string_view prefix, int number);

// The exact text (UTF-8 in memory) that SaveSettings writes, before conversion to Windows-1252.
std::string SettingsFileText(const Settings& settings);

}  // namespace vt
