#include "tasks/mark_task.h"

#include <unordered_set>

#include "agenda/char_positions.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "store/busy.h"
#include "store/cp1252.h"
#include "store/dates.h"
#include "store/error_text.h"
#include "store/sorted_list.h"
#include "store/text_file.h"
#include "tasks/task_log.h"

namespace vt {

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// The shape of a time stamp line, by byte: the positions checked are all ASCII when the line
// is valid, and a multi-byte character in one of them fails the test it meets there.
bool HasTimeStampShape(std::string_view line) {
    if (Utf8Length(line) < 21) {
        return false;
    }
    for (const std::size_t digit : {0U, 1U, 3U, 4U, 6U, 7U, 11U, 12U, 14U, 15U, 17U, 18U}) {
        if (!IsDigit(line[digit])) {
            return false;
        }
    }
    // Only the first two digits of the year are looked at here; reading the whole date below
    // refuses the rest.
    return line[2] == '/' && line[5] == '/' && line[10] == ' ' && line[13] == ':' && line[16] == ':' && line[19] == ' ';
}

void Warn(Dialogs& dialogs, const std::string& text) {
    dialogs.Show({text, MsgIcon::Exclamation, MsgButtons::Ok, {}, {}});
}

}  // namespace

std::vector<std::string> TaskListItems(const std::vector<std::string>& log_lines, TaskOrder order) {
    const bool by_name = order == TaskOrder::ByName;
    std::vector<std::string> names;
    names.reserve(log_lines.size() + 1);
    for (const std::string& line : log_lines) {
        AgregarALista(names, TaskNameOf(line), by_name, true, false);
    }

    std::vector<std::string> items;
    std::unordered_set<std::string> seen;
    auto offer = [&](const std::string& name) {
        if (seen.insert(UpperCaseForList(name)).second) {
            items.push_back(name);
        }
    };
    // Slot 0 of the growable list is never used.
    if (by_name) {
        for (std::size_t i = 1; i < names.size(); ++i) {
            offer(names[i]);
        }
    } else {
        for (std::size_t i = names.size(); i > 1; --i) {
            offer(names[i - 1]);
        }
    }
    return items;
}

std::string LogEditorText(const std::vector<std::string>& log_lines) {
    std::string text;
    for (const std::string& line : log_lines) {
        text += line;
        text += '\n';
    }
    return text;
}

std::optional<std::string> MarcarTarea(const AppPaths& paths, const Clock& clock, Dialogs& dialogs, Busy& busy,
                                       const std::string& typed) {
    if (TrimBlanks(typed).empty()) {
        Warn(dialogs, std::string(kNameRequired));
        return std::nullopt;
    }
    std::error_code error;
    {
        BusyScope scope(busy);
        (void)EnsureFolder(paths.LogFolder());
        // One write for the whole line, so the log never holds half a mark.
        error = AppendToFile(TaskLogPath(paths), Utf8ToCp1252(FormatDateTime(clock.Now()) + " " + typed + "\r\n"));
    }
    if (error) {
        Warn(dialogs, "No se ha podido anotar la tarea en " + TaskLogPath(paths) + ".\r\n" + ErrorText(error));
        return std::nullopt;
    }
    return typed;
}

std::optional<LogProblem> CheckEditedLog(std::string_view text) {
    DateTime previous = NeverScanned();
    for (const std::string& typed : SplitLogLines(text)) {
        // Each line is checked as it will be saved, without its outer blanks: an indented line
        // is fine, and a line whose name is only blanks is as short as it will be on disk.
        const std::string line(TrimBlanks(typed));
        if (line.empty()) {
            continue;
        }
        // The time is checked on a fixed day, so that "24:00:00" and the like are refused
        // whatever the date is.
        const bool valid = HasTimeStampShape(line) && ParseDate(line.substr(0, 10)) &&
                           ParseDateTime("01/01/2001 " + line.substr(11, 8));
        const auto moment = valid ? ParseDateTime(std::string_view(line).substr(0, 19)) : std::nullopt;
        if (!moment) {
            return LogProblem{line, kBadFormatEnding};
        }
        if (*moment < previous) {
            return LogProblem{line, kOutOfOrderEnding};
        }
        previous = *moment;
    }
    return std::nullopt;
}

std::string RewrittenLog(std::string_view text) {
    std::string file;
    for (const std::string& line : SplitLogLines(text)) {
        const std::string_view trimmed = TrimBlanks(line);
        if (!trimmed.empty()) {
            file += trimmed;
            file += "\r\n";
        }
    }
    return Utf8ToCp1252(file);
}

LogSave GuardarLog(const AppPaths& paths, const Clock& clock, Dialogs& dialogs, Busy& busy, std::string_view text,
                   bool changed) {
    if (!changed) {
        return {true, std::nullopt};
    }
    if (const auto problem = CheckEditedLog(text)) {
        dialogs.Show({problem->line + "\r\n\r\n" + std::string(problem->ending),
                      MsgIcon::Exclamation,
                      MsgButtons::Ok,
                      std::string(kBadFormatTitle),
                      {}});
        return {};
    }
    if (dialogs.Show({std::string(kSaveLogQuestion), MsgIcon::Question, MsgButtons::YesNo, {}, MsgAnswer::No}) !=
        MsgAnswer::Yes) {
        return {};
    }
    std::error_code error;
    {
        BusyScope scope(busy);
        (void)EnsureFolder(paths.LogFolder());
        // Written whole beside the old log and renamed over it: a failed save leaves the old log
        // as it was instead of a cut-off one.
        error = WriteFileAtomically(TaskLogPath(paths), RewrittenLog(text));
    }
    if (error) {
        Warn(dialogs, "No se ha podido guardar " + TaskLogPath(paths) + ".\r\n" + ErrorText(error));
        return {};
    }
    return {true, UltimaTareaDeHoy(paths, clock)};
}

bool CancelarLog(Dialogs& dialogs, bool changed) {
    if (!changed) {
        return true;
    }
    return dialogs.Show({std::string(kCancelLogQuestion), MsgIcon::Question, MsgButtons::YesNo, {}, MsgAnswer::No}) ==
           MsgAnswer::Yes;
}

}  // namespace vt
