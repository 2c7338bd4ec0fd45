#pragma once
// `vendrako exportar-ics FICHERO`: the agenda to an iCalendar file from the command line.

#include <ostream>
#include <string>

namespace vt {

// Reads the settings file of `data_folder` (the program's folder, with or without the separator
// at the end) read-only, without the instance lock and without saving anything, so that it
// works while the program runs; writes `file` whole or not at all. Messages go to `err` in
// Spanish. Returns the exit status: 0 written, 1 the agenda or the file failed.
int ExportarIcsCommand(const std::string& data_folder, const std::string& file, std::ostream& err);

}  // namespace vt
