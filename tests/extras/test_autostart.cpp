#include "extras/autostart.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "platform/shell_folders.h"
#include "scripted_dialogs.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

namespace fs = std::filesystem;

class StartupFolderOnly : public ShellFolders {
public:
    explicit StartupFolderOnly(std::string startup) : startup_(std::move(startup)) {}
    std::string CarpetaEspecial(int number) override { return number == kStartupFolder ? startup_ : std::string{}; }

private:
    std::string startup_;
};

// The names in a folder, sorted; none when it does not exist.
std::vector<std::string> FolderListing(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(folder, ec)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

TEST(ExecQuoting, FollowsTheDesktopEntryRules) {
    // clang-format off
    const std::vector<std::pair<const char*, const char*>> cases{
        {"/opt/vt/VendrakoTimer", "/opt/vt/VendrakoTimer"},
        {"/home/ana/mis cosas/VendrakoTimer", "\"/home/ana/mis cosas/VendrakoTimer\""},
        // "$" is escaped for the quoting, and that backslash again as a string.
        {"/home/ana/a b/$x/VT", "\"/home/ana/a b/\\\\$x/VT\""},
        {"/tmp/a\"b/VT", "\"/tmp/a\\\\\"b/VT\""}, {"/tmp/a`b/VT", "\"/tmp/a\\\\`b/VT\""},
        {"/tmp/a\\b/VT", "\"/tmp/a\\\\\\\\b/VT\""}, {"/tmp/(1)/VT", "\"/tmp/(1)/VT\""},
        {"/tmp/it's/VT", "\"/tmp/it's/VT\""}, {"/tmp/100%/VT", "/tmp/100%%/VT"},
        {"/tmp/a b/100%/VT", "\"/tmp/a b/100%%/VT\""},
        // A line break is quoted and written as backslash and "n", so Exec stays one line.
        {"/tmp/a\nb/VT", "\"/tmp/a\\nb/VT\""}};
    // clang-format on
    for (const auto& [path, exec] : cases) {
        EXPECT_EQ(DesktopExecValue(path), exec) << path;
    }
}

class AutostartTest : public ::testing::Test {
protected:
    void SetUp() override { app_.WriteFile("VendrakoTimer", "#!/bin/sh\n"); }
    std::string StartupFolder() const { return home_.Path("config/autostart"); }

    void Run(const AppPaths& paths, MsgAnswer answer) {
        dialogs_.QueueAnswer(answer);
        CrearAccesoInicio(paths, dialogs_, folders_, maker_);
    }

    test::TempAppFolder app_;
    test::TempAppFolder home_{"unused"};
    StartupFolderOnly folders_{home_.Path("config/autostart")};
    DesktopEntryMaker maker_;
    test::ScriptedDialogs dialogs_;
};

TEST_F(AutostartTest, AsksWithOkAndCancelAndCancelCreatesNoFolder) {
    Run(app_.Paths(), MsgAnswer::Cancel);
    ASSERT_EQ(dialogs_.Shown().size(), 1u);
    const MessageBox& box = dialogs_.Shown()[0];
    EXPECT_EQ(
        std::tie(box.text, box.icon, box.buttons),
        std::tuple("¿Desea que el programa se arranque al iniciar Windows?", MsgIcon::Question, MsgButtons::OkCancel));
    EXPECT_FALSE(fs::exists(StartupFolder()));
}

TEST_F(AutostartTest, CancelLeavesTheFolderUntouched) {
    home_.WriteFile("config/autostart/Other.desktop", "[Desktop Entry]\n");
    Run(app_.Paths(), MsgAnswer::Cancel);
    EXPECT_EQ(FolderListing(StartupFolder()), std::vector<std::string>{"Other.desktop"});
    EXPECT_EQ(home_.ReadFile("config/autostart/Other.desktop"), "[Desktop Entry]\n");
}

TEST_F(AutostartTest, OkMakesTheFolderAndOneEntrySilently) {
    Run(app_.Paths(), MsgAnswer::Ok);
    EXPECT_EQ(dialogs_.Shown().size(), 1u);  // the question, nothing after it
    EXPECT_EQ(home_.ReadFile("config/autostart/VendrakoTimer.desktop"),
              "[Desktop Entry]\nType=Application\nName=VendrakoTimer\nExec=" + app_.ExecutablePath() + "\n");
}

TEST_F(AutostartTest, TwiceLeavesOneEntryForTheCurrentExecutable) {
    home_.WriteFile("config/autostart/VendrakoTimer.desktop", "[Desktop Entry]\nExec=/old/place/VendrakoTimer\n");
    Run(app_.Paths(), MsgAnswer::Ok);
    Run(app_.Paths(), MsgAnswer::Ok);
    EXPECT_EQ(FolderListing(StartupFolder()), std::vector<std::string>{"VendrakoTimer.desktop"});
    const std::string entry = home_.ReadFile("config/autostart/VendrakoTimer.desktop");
    EXPECT_NE(entry.find("\nExec=" + app_.ExecutablePath() + "\n"), std::string::npos) << entry;
    EXPECT_EQ(entry.find("/old/place"), std::string::npos) << entry;
}

TEST_F(AutostartTest, AnotherNameMakesItsOwnEntryAndKeepsTheOld) {
    Run(app_.Paths(), MsgAnswer::Ok);
    test::TempAppFolder renamed("Reloj");
    renamed.WriteFile("Reloj", "#!/bin/sh\n");
    Run(renamed.Paths(), MsgAnswer::Ok);
    EXPECT_EQ(FolderListing(StartupFolder()), (std::vector<std::string>{"Reloj.desktop", "VendrakoTimer.desktop"}));
    EXPECT_NE(home_.ReadFile("config/autostart/Reloj.desktop").find("Name=Reloj\nExec=" + renamed.ExecutablePath()),
              std::string::npos);
}

TEST_F(AutostartTest, MissingExecutableWritesNothing) {
    AppPaths paths = app_.Paths();
    paths.ExeBaseName = "NotThere";
    Run(paths, MsgAnswer::Ok);
    EXPECT_EQ(dialogs_.Shown().size(), 1u);
    EXPECT_FALSE(fs::exists(StartupFolder()));
}

TEST_F(AutostartTest, NoStartupFolderWritesNothing) {
    StartupFolderOnly none{""};
    dialogs_.QueueAnswer(MsgAnswer::Ok);
    CrearAccesoInicio(app_.Paths(), dialogs_, none, maker_);
    EXPECT_EQ(dialogs_.Shown().size(), 1u);
    EXPECT_FALSE(fs::exists(StartupFolder()));
}

TEST_F(AutostartTest, PathWithASpaceAndADollarIsQuoted) {
    test::TempAppFolder odd("Vendrako Timer$1");
    odd.WriteFile("Vendrako Timer$1", "#!/bin/sh\n");
    Run(odd.Paths(), MsgAnswer::Ok);
    const std::string entry = home_.ReadFile("config/autostart/Vendrako Timer$1.desktop");
    EXPECT_NE(entry.find("\nName=Vendrako Timer$1\n"), std::string::npos) << entry;
    EXPECT_NE(entry.find("\nExec=\"" + odd.Folder() + "Vendrako Timer\\\\$1\"\n"), std::string::npos) << entry;
}

}  // namespace
}  // namespace vt
