#pragma once
// What the mark-task dialog (frmMarcar) decides: the task list in its two orders, marking a
// task, and checking and saving the log the user edited by hand. The dialog only copies its
// fields in and does what these functions answer.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/app_paths.h"

namespace vt {

class Busy;
class Clock;
class Dialogs;

enum class TaskOrder {
    LastUse,  // "Por último uso.": the most recent use first
    ByName,   // "Por nombre.": alphabetical
};

inline constexpr std::string_view kNameRequired = "El nombre de la tarea es obligatorio.";
inline constexpr std::string_view kBadFormatTitle = "Formato incorrecto";
inline constexpr std::string_view kBadFormatEnding = "(dd/mm/yyyy hh:mm:ss texto)";
inline constexpr std::string_view kOutOfOrderEnding = "(Las fechas deben ser consecutivas)";
// "en del" is how the program has always asked; users know the question by it.
inline constexpr std::string_view kSaveLogQuestion = "¿Guardar los cambios en del Log?";
inline constexpr std::string_view kCancelLogQuestion = "¿Cancelar los cambios en el Log?";

// The names of the drop-down list: each name once, ignoring case, at its first place in the
// chosen order (so in last-use order a task shows where it was used last).
std::vector<std::string> TaskListItems(const std::vector<std::string>& log_lines, TaskOrder order);

// The log as the editor shows it: each line followed by a line break ("\n", the editor's).
std::string LogEditorText(const std::vector<std::string>& log_lines);

// Marks the typed task: appends "dd/mm/yyyy hh:mm:ss name" with the name exactly as typed,
// blanks included. Returns the new current task, or nothing when the name is blank or the
// line cannot be written (the user has been told; the dialog stays open).
std::optional<std::string> MarcarTarea(const AppPaths& paths, const Clock& clock, Dialogs& dialogs, Busy& busy,
                                       const std::string& typed);

// Why an edited log cannot be saved: the offending line and the ending of the message.
struct LogProblem {
    std::string line;
    std::string_view ending;  // kBadFormatEnding or kOutOfOrderEnding
};

// Checks every non-blank line, without its outer blanks: the time stamp's shape, a real date and time, and times that
// never go back (an equal time is fine). Lines split at CR LF (or LF). Nothing on success.
std::optional<LogProblem> CheckEditedLog(std::string_view text);

// The file an edited log becomes: every line that is not blank, trimmed, each with CR LF.
std::string RewrittenLog(std::string_view text);

// What Enter in the log editor leads to.
struct LogSave {
    bool close = false;                       // the dialog closes
    std::optional<std::string> tarea_actual;  // the new current task when the log was saved
};

// Enter in the log editor: unchanged text just closes; changed text is checked, confirmed with
// "¿Guardar los cambios en del Log?" and written over the log, and the current task becomes
// the last of today. A refusal, a No or a write failure keeps the dialog open with the edits.
LogSave GuardarLog(const AppPaths& paths, const Clock& clock, Dialogs& dialogs, Busy& busy, std::string_view text,
                   bool changed);

// Escape: true when the dialog may close (nothing changed, or the user gives the edits up).
bool CancelarLog(Dialogs& dialogs, bool changed);

}  // namespace vt
