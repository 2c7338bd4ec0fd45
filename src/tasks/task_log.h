#pragma once
// TAREAS.LOG, the task log: one line per marked task, oldest first, each line the time stamp
// "dd/mm/yyyy hh:mm:ss", one blank and the task name as it was typed. Characters 1-10 are the
// date, 12-19 the time, and the name starts at character 21.

#include <string>
#include <string_view>
#include <vector>

#include "store/app_paths.h"
#include "store/dates.h"

namespace vt {

class Clock;

std::string TaskLogPath(const AppPaths& paths);

// The log's lines in UTF-8, without their line ends. A missing or unreadable log reads as no
// lines: either way there is no task to show.
std::vector<std::string> ReadTaskLog(const AppPaths& paths);

// Splits text into lines at CR LF. A lone LF also ends a line, so a log touched by a Linux
// editor still reads line by line; the break after the last line opens no empty line.
std::vector<std::string> SplitLogLines(std::string_view text);

// The name part of a log line (characters 21 on), "" when the line is shorter.
std::string_view TaskNameOf(std::string_view line);
// The date part (characters 1-10) and the time part (characters 12-19).
std::string_view TaskDateOf(std::string_view line);
std::string_view TaskTimeOf(std::string_view line);

// The name of the last line dated today, "" when there is none.
std::string UltimaTareaDeHoy(const std::vector<std::string>& lines, Date today);
// The same from the file, read once: the current task at start-up and after an edit.
std::string UltimaTareaDeHoy(const AppPaths& paths, const Clock& clock);

}  // namespace vt
