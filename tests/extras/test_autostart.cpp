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

TEST_F(AutostartTest, MissingExecutableWritesNothing) {
    AppPaths paths = app_.Paths();
    paths.ExeBaseName = "NotThere";
    Run(paths, MsgAnswer::Ok);
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
    // A line break is quoted and written as backslash and "n", so Exec stays one line.
    EXPECT_EQ(DesktopExecValue("/tmp/a\nb/VT"), "\"/tmp/a\\nb/VT\"");
}

}  // namespace
}  // namespace vt
