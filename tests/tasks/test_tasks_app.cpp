// The task items as App runs them: the current task read at start-up, a mark, the summary.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app_harness.h"
#include "store/cp1252.h"

namespace vt {
namespace {

class TasksAppTest : public ::testing::Test, public test::AppHarness {
protected:
    TasksAppTest() {
        clock.Set(13, 3, 2024, 12, 0);
        folder.WriteFile("VendrakoTimer.ini", "[GENERAL]\r\nFECHA=13-03-24\r\nENTRADA1=08:00\r\n");
        folder.WriteFile("LOG/TAREAS.LOG", Utf8ToCp1252("12/03/2024 17:00:00 Ayer\r\n13/03/2024 08:05:00 Correo\r\n"
                                                        "13/03/2024 10:00:00 Revisión\r\n"));
    }
};

// The boxes as they stand, not the stored clock-ins: the typed entry time opens the summary.
TEST_F(TasksAppTest, TheSummaryIsShownFromTheBoxesAsTheyStand) {
    ASSERT_EQ(Start(), Outcome::Continue);
    dialogs.Forget();
    view.typed = {"07:30", "", ""};
    app->ShowTaskSummary();
    ASSERT_EQ(dialogs.Shown().size(), 1u);
    EXPECT_EQ(dialogs.Shown()[0].icon, MsgIcon::Information);
    EXPECT_THAT(dialogs.Shown()[0].text, testing::HasSubstr("07:30:00 [entrada]\r\n08:05:00 Correo"));
}

}  // namespace
}  // namespace vt
