// Feeds arbitrary text to the task log's readers: the check of an edited log, the rewrite, the
// current task, the list and the summary. None may crash, and a log the check accepts must
// still be accepted once rewritten (the rewrite only drops blank lines and outer blanks).
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "store/cp1252.h"
#include "tasks/mark_task.h"
#include "tasks/task_log.h"
#include "tasks/task_summary.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);

    if (!vt::CheckEditedLog(text)) {
        const std::string rewritten = vt::Cp1252ToUtf8(vt::RewrittenLog(text));
        if (vt::Utf8ToCp1252(text).find('?') == std::string::npos && vt::CheckEditedLog(rewritten)) {
            std::abort();
        }
    }
    const auto lines = vt::SplitLogLines(text);
    const vt::Date day = vt::MakeDate(2, 1, 2024);
    (void)vt::UltimaTareaDeHoy(lines, day);
    (void)vt::TaskListItems(lines, vt::TaskOrder::LastUse);
    (void)vt::TaskListItems(lines, vt::TaskOrder::ByName);
    (void)vt::ResumenTareas(lines, {"08:00", "14:00", "15:00"}, vt::MakeDateTime(day, 18, 0));
    return 0;
}
