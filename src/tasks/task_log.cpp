#include "tasks/task_log.h"

#include "agenda/char_positions.h"
#include "platform/clock.h"
#include "store/cp1252.h"
#include "store/text_file.h"

namespace vt {

std::string TaskLogPath(const AppPaths& paths) {
    return paths.LogFolder() + "/TAREAS.LOG";
}

std::vector<std::string> ReadTaskLog(const AppPaths& paths) {
    const FileContents file = ReadWholeFile(TaskLogPath(paths));
    if (file.outcome != ReadOutcome::Read) {
        return {};
    }
    return SplitLogLines(Cp1252ToUtf8(file.bytes));
}

std::vector<std::string> SplitLogLines(std::string_view text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        const std::size_t next = end == std::string_view::npos ? text.size() : end + 1;
        if (end == std::string_view::npos) {
            end = text.size();
        }
        std::string_view line = text.substr(start, end - start);
        if (next != start + line.size() && !line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        lines.emplace_back(line);
        start = next;
    }
    return lines;
}

std::string_view TaskNameOf(std::string_view line) {
    return CharMid(line, 21);
}

std::string_view TaskDateOf(std::string_view line) {
    return CharMid(line, 1, 10);
}

std::string_view TaskTimeOf(std::string_view line) {
    return CharMid(line, 12, 8);
}

std::string UltimaTareaDeHoy(const std::vector<std::string>& lines, Date today) {
    const std::string day = FormatDate(today);
    for (auto it = lines.rbegin(); it != lines.rend(); ++it) {
        if (TaskDateOf(*it) == day) {
            return std::string(TaskNameOf(*it));
        }
    }
    return {};
}

std::string UltimaTareaDeHoy(const AppPaths& paths, const Clock& clock) {
    return UltimaTareaDeHoy(ReadTaskLog(paths), Today(clock));
}

}  // namespace vt
