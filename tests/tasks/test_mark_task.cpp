// Marking a task, the drop-down list's two orders, and checking and saving a hand-edited log.
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "fake_clock.h"
#include "recording_busy.h"
#include "scripted_dialogs.h"
#include "tasks/mark_task.h"
#include "tasks/task_log.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

const std::string kLog = "LOG/TAREAS.LOG";
const std::string kTwoLines = "02/01/2024 08:00:00 Correo\r\n02/01/2024 10:00:00 Informe\r\n";

class MarkTask : public testing::Test {
protected:
    test::TempAppFolder folder;
    test::FakeClock clock{MakeDateTime(MakeDate(2, 1, 2024), 9, 5, 7)};
    test::ScriptedDialogs dialogs;
    test::RecordingBusy busy;

    std::optional<std::string> Mark(const std::string& typed) {
        return MarcarTarea(folder.Paths(), clock, dialogs, busy, typed);
    }
    LogSave Save(const std::string& text, bool changed = true) {
        return GuardarLog(folder.Paths(), clock, dialogs, busy, text, changed);
    }
};

TEST_F(MarkTask, CreatesTheLogInWindows1252) {
    EXPECT_EQ(Mark("Reunión"), "Reunión");
    EXPECT_EQ(folder.ReadFile(kLog), "02/01/2024 09:05:07 Reuni\xF3n\r\n");
    EXPECT_EQ(UltimaTareaDeHoy(folder.Paths(), clock), "Reunión");
}

// Used, oldest first: A, b, a, C.
const std::vector<std::string> kUsed{"01/01/2024 08:00:00 A", "01/01/2024 09:00:00 b", "02/01/2024 08:00:00 a",
                                     "02/01/2024 09:00:00 C"};

TEST(TaskList, BothOrdersKeepEachNameOnce) {
    // By last use, the last task comes first.
    EXPECT_EQ(TaskListItems(kUsed, TaskOrder::LastUse), (std::vector<std::string>{"C", "a", "b"}));
    // By name, plain text order: capitals sort before small letters, so "A" comes first and "a" is
    // then dropped as its equal.
    EXPECT_EQ(TaskListItems(kUsed, TaskOrder::ByName), (std::vector<std::string>{"A", "C", "b"}));
    EXPECT_TRUE(TaskListItems({}, TaskOrder::LastUse).empty());
    EXPECT_EQ(LogEditorText({"x", "y"}), "x\ny\n");
}

TEST(EditedLogCheck, FindsTheFirstOffendingLine) {
    const std::string_view kFormat = kBadFormatEnding, kOrder = kOutOfOrderEnding;
    const auto no = std::nullopt;
    // clang-format off
    const std::vector<std::tuple<const char*, std::string, std::optional<std::string>, std::string_view>> cases{
        {"InOrder", kTwoLines, no, {}},
        {"EqualTimeAccepted", "02/01/2024 08:00:00 A\r\n02/01/2024 08:00:00 B\r\n", no, {}},
        {"BlankLinesSkipped", "\r\n   \r\n02/01/2024 08:00:00 A\r\n\r\n", no, {}},
        {"OneCharacterName", "02/01/2024 08:00:00 x", no, {}},
        {"EarlierLineRefused", "02/01/2024 08:00:00 A\r\n02/01/2024 07:59:59 B\r\n02/01/2024 07:00:00 C", "02/01/2024 07:59:59 B", kOrder},
        {"EarlierDayRefused", "02/01/2024 08:00:00 A\r\n01/01/2024 09:00:00 B", "01/01/2024 09:00:00 B", kOrder},
        {"BeforeTheSentinelRefused", "31/12/1900 23:59:59 A", "31/12/1900 23:59:59 A", kOrder},
        {"TwentyCharactersRefused", "02/01/2024 08:00:00 ", "02/01/2024 08:00:00", kFormat},
        {"TwentyCharactersWithoutTheBlank", "02/01/2024 08:00:00AB", "02/01/2024 08:00:00AB", kFormat},
        {"NoDate", "Correo sin fecha ni hora", "Correo sin fecha ni hora", kFormat},
        {"OuterBlanksLeftOut", "  02/01/2024 08:00:00 A  ", no, {}},
        {"BlankNameIsTooShort", "02/01/2024 08:00:00     ", "02/01/2024 08:00:00", kFormat},
        {"NoDate31February", "31/02/2024 08:00:00 A", "31/02/2024 08:00:00 A", kFormat},
        {"YearLettersCaughtByTheDate", "02/01/20a4 08:00:00 A", "02/01/20a4 08:00:00 A", kFormat},
        {"Hour24", "02/01/2024 24:00:00 A", "02/01/2024 24:00:00 A", kFormat},
        {"Second60", "02/01/2024 08:00:60 A", "02/01/2024 08:00:60 A", kFormat},
        {"DashesInTheDate", "02-01-2024 08:00:00 A", "02-01-2024 08:00:00 A", kFormat},
        {"NoBlankBeforeTheName", "02/01/2024 08:00:00-A", "02/01/2024 08:00:00-A", kFormat},
        {"AccentInTheStamp", "02/01/2024 08:0á:00 A", "02/01/2024 08:0á:00 A", kFormat},
        {"FormatBeforeOrder", "02/01/2024 09:00:00 A\r\nmal\r\n02/01/2024 08:00:00 B", "mal", kFormat}};
    // clang-format on
    for (const auto& [name, text, bad_line, ending] : cases) {
        const auto problem = CheckEditedLog(text);
        ASSERT_EQ(problem.has_value(), bad_line.has_value()) << name;
        if (problem) {
            EXPECT_EQ(problem->line, *bad_line) << name;
            EXPECT_EQ(problem->ending, ending) << name;
        }
    }
}

}  // namespace
}  // namespace vt
