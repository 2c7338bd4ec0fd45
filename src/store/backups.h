#pragma once
#include <string>
#include <string_view>
#include <system_error>

#include "store/app_paths.h"
#include "store/app_state.h"
#include "store/text_file.h"

namespace vt {

class Busy;
class Clock;
class Dialogs;

// The backup slot ("Backup/<base>_001.ini" .. "_025.ini") that the next save copies to:
// the first free one, else the one holding the oldest copy.
std::string NextSettingsBackupPath(const AppPaths& paths);

// Copies the settings file as read (settings) into NextSettingsBackupPath (creating "Backup"
// when missing) and makes that copy's file time later than every other slot's, so the next
// call finds the oldest copy. The error when the copy could not be made whole; no slot then
// holds a partial copy.
std::error_code BackUpSettingsFile(const AppPaths& paths, const FileContents& settings);

// Copies source over destination when source exists; the copy carries the source's file time.
// Returns false only when the source exists and could not be copied whole.
bool CopyIfExists(const std::string& source, const std::string& destination);

// Mirrors the "LOG" folder into "Backup": files with the same file time are skipped.
void MirrorLogFolder(const AppPaths& paths, Busy& busy);

// Appends "[dd/mm/yyyy hh:mm:ss] " + text as one line to LOG/TIMER.LOG. A line that cannot be
// written is dropped; the first such line of a run tells the user why (status remembers it).
void AppendRunLog(const AppPaths& paths, const Clock& clock, Busy& busy, Dialogs& dialogs, StoreStatus& status,
                  std::string_view text);

}  // namespace vt
