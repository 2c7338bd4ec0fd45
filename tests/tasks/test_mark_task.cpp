// Marking a task, the drop-down list's two orders, and checking and saving a hand-edited log.
#include <gtest/gtest.h>

#include <string>
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

TEST_F(MarkTask, WritesTheNameWithItsBlanksAfterTheTimeStamp) {
    folder.WriteFile(kLog, "01/01/2024 17:00:00 Ayer\r\n");
    EXPECT_EQ(Mark("  Correo  "), "  Correo  ");
    EXPECT_EQ(folder.ReadFile(kLog), "01/01/2024 17:00:00 Ayer\r\n02/01/2024 09:05:07   Correo  \r\n");
    EXPECT_TRUE(dialogs.Shown().empty());
    EXPECT_EQ(busy.calls, (std::vector<bool>{true, false}));
}

TEST_F(MarkTask, RefusesABlankName) {
    EXPECT_EQ(Mark("   "), std::nullopt);
    ASSERT_EQ(dialogs.Shown().size(), 1U);
    EXPECT_EQ(dialogs.Shown()[0].text, "El nombre de la tarea es obligatorio.");
    EXPECT_EQ(dialogs.Shown()[0].icon, MsgIcon::Exclamation);
    EXPECT_FALSE(folder.Exists(kLog));
}

// Used, oldest first: A, b, a, C.
const std::vector<std::string> kUsed{"01/01/2024 08:00:00 A", "01/01/2024 09:00:00 b", "02/01/2024 08:00:00 a",
                                     "02/01/2024 09:00:00 C"};

TEST(TaskList, LastUseOrderPutsTheLastTaskFirstAndEachNameOnce) {
    EXPECT_EQ(TaskListItems(kUsed, TaskOrder::LastUse), (std::vector<std::string>{"C", "a", "b"}));
}

struct CheckCase {
    const char* name;
    std::string text;
    std::optional<std::string> bad_line;
    std::string_view ending;
};

class EditedLogCheck : public testing::TestWithParam<CheckCase> {};

TEST_P(EditedLogCheck, FindsTheFirstOffendingLine) {
    const CheckCase& c = GetParam();
    const auto problem = CheckEditedLog(c.text);
    ASSERT_EQ(problem.has_value(), c.bad_line.has_value());
    if (problem) {
        EXPECT_EQ(problem->line, *c.bad_line);
        EXPECT_EQ(problem->ending, c.ending);
    }
}

const std::string_view kFormat = kBadFormatEnding;
const std::string_view kOrder = kOutOfOrderEnding;

INSTANTIATE_TEST_SUITE_P(
    Lines, EditedLogCheck,
    testing::Values(
        CheckCase{"InOrder", kTwoLines, std::nullopt, {}},
        CheckCase{"EqualTimeAccepted", "02/01/2024 08:00:00 A\r\n02/01/2024 08:00:00 B\r\n", std::nullopt, {}},
        CheckCase{"EarlierLineRefused", "02/01/2024 08:00:00 A\r\n02/01/2024 07:59:59 B\r\n02/01/2024 07:00:00 C",
                  "02/01/2024 07:59:59 B", kOrder},
        CheckCase{"TwentyCharactersRefused", "02/01/2024 08:00:00 ", "02/01/2024 08:00:00", kFormat},
        CheckCase{"NoDate", "Correo sin fecha ni hora", "Correo sin fecha ni hora", kFormat},
        CheckCase{"NoDate31February", "31/02/2024 08:00:00 A", "31/02/2024 08:00:00 A", kFormat},
        CheckCase{"Hour24", "02/01/2024 24:00:00 A", "02/01/2024 24:00:00 A", kFormat},
        CheckCase{"NoBlankBeforeTheName", "02/01/2024 08:00:00-A", "02/01/2024 08:00:00-A", kFormat},
        CheckCase{"FormatBeforeOrder", "02/01/2024 09:00:00 A\r\nmal\r\n02/01/2024 08:00:00 B", "mal", kFormat}),
    [](const testing::TestParamInfo<CheckCase>& row) { return std::string(row.param.name); });

TEST_F(MarkTask, UnchangedLogJustCloses) {
    folder.WriteFile(kLog, kTwoLines);
    const LogSave save = Save("basura", false);
    EXPECT_TRUE(save.close);
    EXPECT_EQ(save.tarea_actual, std::nullopt);
    EXPECT_TRUE(dialogs.Shown().empty());
    EXPECT_EQ(folder.ReadFile(kLog), kTwoLines);
}

TEST_F(MarkTask, BadLineIsShownAndNothingIsWritten) {
    folder.WriteFile(kLog, kTwoLines);
    const LogSave save = Save("02/01/2024 10:00:00 B\n02/01/2024 09:00:00 A\n");
    EXPECT_FALSE(save.close);
    ASSERT_EQ(dialogs.Shown().size(), 1U);
    const MessageBox& box = dialogs.Shown()[0];
    EXPECT_EQ(box.text, "02/01/2024 09:00:00 A\r\n\r\n(Las fechas deben ser consecutivas)");
    EXPECT_EQ(box.icon, MsgIcon::Exclamation);
    EXPECT_EQ(folder.ReadFile(kLog), kTwoLines);
}

TEST_F(MarkTask, SavedLogLosesBlankLinesAndOuterBlanks) {
    folder.WriteFile(kLog, kTwoLines);
    dialogs.QueueAnswer(MsgAnswer::Yes);
    const LogSave save = Save("\n  02/01/2024 08:00:00 Correo  \n\n   \n02/01/2024 08:30:00 Reunión\n");
    EXPECT_TRUE(save.close);
    EXPECT_EQ(save.tarea_actual, "Reunión");
    EXPECT_EQ(folder.ReadFile(kLog), "02/01/2024 08:00:00 Correo\r\n02/01/2024 08:30:00 Reuni\xF3n\r\n");
    EXPECT_EQ(busy.calls, (std::vector<bool>{true, false}));
}

}  // namespace
}  // namespace vt
