#pragma once
#include "store/app_paths.h"
#include "store/app_state.h"

namespace vt {

class Busy;
class Clock;
class Dialogs;
class RecentFiles;

enum class ScanOutcome {
    Logged,    // the run went through and ULTIMO now holds its start
    NoSource,  // the desktop has no list of recent files: nothing done
    Stopped,   // the user was told why; ULTIMO is unchanged, so the next run takes the same files
};

// The periodic recent-files scan: every file the desktop used at or after settings.UltimoAcceso
// goes, in time order, into the month's access page (a new page gets its head, a new day its
// heading), and UltimoAcceso becomes the moment the run started, in memory and under
// ACCESOS/ULTIMO of the settings file. Files named Thumbs.db or Desktop.ini (any case) are not
// logged, nor a file dated at or after tomorrow's midnight, which the user is warned about. The
// first run of a new day writes the day's heading even when nothing was used. A page that
// cannot be written stops the run with a message; what was appended before stays. A list that
// cannot be read stops the run too, with its message only the first time it fails as it is.
ScanOutcome TratarArchivosRecientes(const AppPaths& paths, Settings& settings, const Clock& clock, Dialogs& dialogs,
                                    Busy& busy, RecentFiles& recent);

}  // namespace vt
