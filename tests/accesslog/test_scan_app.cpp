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

// The closing scan of an ending session would warn of a file dated in the future; nothing may
// wait for the user then, so it and every later box or input box are answered unseen.
TEST_F(ScanAppTest, WhenTheSessionEndsTheClosingScanWarnsOfNothing) {
    ASSERT_EQ(app->Start(""), Outcome::Continue);
    recent.Add("futuro.odt", "/home/ana/futuro.odt", MakeDateTime(MakeDate(20, 3, 2024), 8, 30));
    std::filesystem::remove_all(folder.Path("Backup"));
    dialogs.Forget();
    app->Shutdown(false);
    EXPECT_EQ(recent.calls, 2);
    EXPECT_TRUE(folder.Exists("Backup/2024.03.MARZO.htm")) << "the log is still mirrored";
    EXPECT_TRUE(app->SessionEnding());
    EXPECT_EQ(dialogs.Show({"¿Seguro?", MsgIcon::Question, MsgButtons::YesNo, {}, {}}), MsgAnswer::No);
    EXPECT_EQ(dialogs.Show({"?", MsgIcon::Question, MsgButtons::OkCancel, {}, MsgAnswer::Ok}), MsgAnswer::Cancel);
    EXPECT_EQ(dialogs.Ask({"Fecha", "", "13/03/2024"}), std::nullopt);
    EXPECT_TRUE(dialogs.Texts().empty());
    EXPECT_TRUE(dialogs.Asked().empty());
}

TEST_F(ScanAppTest, TheAccesosItemsOpenTodaysPageOrSaySoAndTheFolders) {
    recent.listing.files.clear();
    folder.WriteFile("VendrakoTimer.ini", "[GENERAL]\r\nFECHA=13-03-24\r\n[ACCESOS]\r\nULTIMO=13/03/2024 08:00:00\r\n");
    ASSERT_EQ(app->Start("DESA"), Outcome::Continue);
    dialogs.Forget();
    app->OpenTodaysAccessLog();
    EXPECT_FALSE(folder.Exists("LOG/2024.03.MARZO.htm")) << "asking for the page creates none";
    folder.WriteFile("LOG/2024.03.MARZO.htm", "x");
    app->OpenTodaysAccessLog();
    app->OpenAccessLogFolder();
    // The recent files: no folder known is said so (opening "/" would show the root of the disk),
    // a folder is opened with its separator, and the desktop's own view comes first.
    app->OpenRecentFilesFolder();
    special.recent = "/r/Recent";
    app->OpenRecentFilesFolder();
    special.view = "recent:///";
    app->OpenRecentFilesFolder();
    EXPECT_EQ(dialogs.Texts(), (std::vector<std::string>{"Aún no existe un LOG para hoy.",
                                                         "No se encuentra la carpeta de archivos recientes."}));
    const std::string from = " | " + folder.Folder();
    EXPECT_EQ(shell.opened,
              (std::vector<std::string>{folder.Path("LOG/2024.03.MARZO.htm") + from, folder.Path("LOG/") + from,
                                        "/r/Recent/" + from, "recent:///" + from}));
}

}  // namespace
}  // namespace vt
