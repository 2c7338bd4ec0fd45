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

using Texts = std::vector<std::string>;
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
    ASSERT_EQ(dialogs.Texts(), Texts{"El nombre de la tarea es obligatorio."});
    EXPECT_EQ(dialogs.Shown()[0].icon, MsgIcon::Exclamation);
    EXPECT_FALSE(folder.Exists(kLog));
}

TEST(TaskList, LastUseOrderPutsTheLastTaskFirstAndEachNameOnce) {
    // Used, oldest first: A, b, a, C.
    const Texts used{"01/01/2024 08:00:00 A", "01/01/2024 09:00:00 b", "02/01/2024 08:00:00 a",
                     "02/01/2024 09:00:00 C"};
    EXPECT_EQ(TaskListItems(used, TaskOrder::LastUse), (Texts{"C", "a", "b"}));
}

// The first offending line of an edited log and the ending of its message, or "fine".
std::string CheckOf(const std::string& text) {
    const auto problem = CheckEditedLog(text);
    return problem ? problem->line + " | " + std::string(problem->ending) : "fine";
}

TEST(EditedLogCheck, FindsTheFirstOffendingLine) {
    const std::string order = " | (Las fechas deben ser consecutivas)";
    const std::string format = " | (dd/mm/yyyy hh:mm:ss texto)";
    EXPECT_EQ(CheckOf(kTwoLines), "fine");
    EXPECT_EQ(CheckOf("02/01/2024 08:00:00 A\r\n02/01/2024 08:00:00 B\r\n"), "fine") << "an equal time is fine";
    EXPECT_EQ(CheckOf("02/01/2024 08:00:00 A\r\n02/01/2024 07:59:59 B\r\n02/01/2024 07:00:00 C"),
              "02/01/2024 07:59:59 B" + order);
    EXPECT_EQ(CheckOf("02/01/2024 08:00:00 "), "02/01/2024 08:00:00" + format) << "twenty characters, no name";
    for (const std::string line :
         {"Correo sin fecha ni hora", "31/02/2024 08:00:00 A", "02/01/2024 24:00:00 A", "02/01/2024 08:00:00-A"}) {
        EXPECT_EQ(CheckOf(line), line + format);
    }
    EXPECT_EQ(CheckOf("02/01/2024 09:00:00 A\r\nmal\r\n02/01/2024 08:00:00 B"), "mal" + format)
        << "the format is checked before the order";
}

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
    EXPECT_FALSE(Save("02/01/2024 10:00:00 B\n02/01/2024 09:00:00 A\n").close);
    ASSERT_EQ(dialogs.Texts(), Texts{"02/01/2024 09:00:00 A\r\n\r\n(Las fechas deben ser consecutivas)"});
    EXPECT_EQ(dialogs.Shown()[0].icon, MsgIcon::Exclamation);
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
