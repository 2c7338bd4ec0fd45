// The recent-files scan and the "Accesos" items as App runs them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "accesslog_fakes.h"
#include "app_harness.h"
#include "store/cp1252.h"

namespace vt {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

class ScanAppTest : public ::testing::Test, public test::AppHarness {
protected:
    ScanAppTest() {
        clock.Set(13, 3, 2024, 9, 0);
        folder.WriteFile(
            "VendrakoTimer.ini",
            "[GENERAL]\r\nFECHA=13-03-24\r\nENTRADA1=08:00\r\n[ACCESOS]\r\nULTIMO=12/03/2024 18:00:00\r\n");
        recent.Add("informe.odt", "/home/ana/informe.odt", MakeDateTime(MakeDate(13, 3, 2024), 8, 30));
        recent_files = &recent;
        shell_open = &shell;
        shell_folders = &special;
        MakeApp();
    }

    test::FakeRecentFiles recent;
    test::RecordingShellOpen shell;
    test::FakeShellFolders special;
};

TEST_F(ScanAppTest, StartUpScansOnceAndTheTickEveryFiveMinutes) {
    recent.on_list = [&] {
        ASSERT_FALSE(view.busy_pointer.empty());
        EXPECT_TRUE(view.busy_pointer.back()) << "the hourglass while it runs";
    };
    ASSERT_EQ(app->Start("DESA"), Outcome::Continue);
    EXPECT_EQ(recent.calls, 1);
    EXPECT_EQ(view.busy_pointer, (std::vector<bool>{true, false}));
    // Pages are Windows-1252.
    EXPECT_THAT(
        folder.ReadFile("LOG/2024.03.MARZO.htm"),
        AllOf(HasSubstr(Utf8ToCp1252("<b>DIA 13 (Miércoles)</b>")),
              HasSubstr("08:30:00\r\n <a href='file:///home/ana/informe.odt'>/home/ana/informe.odt</a>\r\n<br>\r\n")));
    EXPECT_THAT(folder.ReadFile("VendrakoTimer.ini"), HasSubstr("ULTIMO=13/03/2024 09:00:00"));
    for (int tick = 0; tick < 301; ++tick) {
        app->Tick();
    }
    EXPECT_EQ(recent.calls, 2);
    app->Shutdown(false);
    EXPECT_EQ(recent.calls, 3) << "a last scan on the way out";
}

}  // namespace
}  // namespace vt
