#include "shell/app.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "fake_clock.h"
#include "fake_ports.h"
#include "scripted_dialogs.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

using test::FakeClock;
using test::ScriptedDialogs;
using test::TempAppFolder;
using FakeLocale = test::FakeLocaleInfo;
using FakeLock = test::FakeInstanceLock;
using RecordingView = test::RecordingMainView;

constexpr const char* kWrongFormat =
    "Para que el programa funcione correctamente el formato de la fecha debe ser 'dd/MM/yyyy'.";

class AppTest : public ::testing::Test {
protected:
    App& MakeApp() {
        app_ = std::make_unique<App>(AppPorts{clock, dialogs, locale, lock, folder.ExecutablePath()}, view, tray);
        return *app_;
    }
    std::vector<std::string> FolderListing() const {
        std::vector<std::string> names;
        for (const auto& e : std::filesystem::recursive_directory_iterator(folder.Folder())) {
            names.push_back(e.path().string());
        }
        return names;
    }

    TempAppFolder folder;
    FakeClock clock;
    ScriptedDialogs dialogs;
    FakeLocale locale;
    FakeLock lock;
    RecordingView view;
    test::RecordingTrayView tray;
    std::unique_ptr<App> app_;
};

struct FormatCase {
    const char* format;
    bool accepted;
};

class DateFormatCheck : public ::testing::TestWithParam<FormatCase> {};

TEST_P(DateFormatCheck, AcceptsOnlyDayMonthYearWithSlashes) {
    FakeLocale locale;
    locale.format = GetParam().format;
    ScriptedDialogs dialogs;
    EXPECT_EQ(CheckDateFormat(locale, dialogs), GetParam().accepted);
    if (GetParam().accepted) {
        EXPECT_TRUE(dialogs.Shown().empty());
    } else {
        ASSERT_EQ(dialogs.Shown().size(), 1u);
        EXPECT_EQ(dialogs.Shown()[0].text, kWrongFormat);
        EXPECT_EQ(dialogs.Shown()[0].icon, MsgIcon::Critical);
        EXPECT_EQ(dialogs.Shown()[0].buttons, MsgButtons::Ok);
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, DateFormatCheck,
                         ::testing::Values(FormatCase{"dd/MM/yyyy", true}, FormatCase{"DD/MM/YYYY", true},
                                           FormatCase{"dd/mm/YYYY", true}, FormatCase{"d/M/yyyy", false},
                                           FormatCase{"dd-MM-yyyy", false}, FormatCase{"yyyy/MM/dd", false},
                                           FormatCase{"dd/MM/yy", false}, FormatCase{"MM/dd/yyyy", false},
                                           FormatCase{"d MMM yyyy", false}, FormatCase{"", false},
                                           FormatCase{"dd/MM/yyyy ", false}));

TEST_F(AppTest, StartLoadsSettingsSetsCaptionAndEnablesTheOneSecondTimer) {
    folder.WriteFile("VendrakoTimer.ini",
                     "[GENERAL]\r\nFECHA=02-01-24\r\nENTRADA1=07:45\r\nNUM_ALARMAS=1\r\n[ALARMAS]\r\nALA_001=15/03/2024 09:30 00 D 14 0 Cita\r\n");
    App& app = MakeApp();
    ASSERT_EQ(app.Start(""), Outcome::Continue);
    EXPECT_EQ(app.State().settings.Entrada1, "07:45");
    EXPECT_EQ(app.State().settings.Alarms.Count(), 1);
    EXPECT_EQ(app.State().TimerIntervalMs, 1000);
    EXPECT_TRUE(app.State().TimerEnabled);
    EXPECT_EQ(app.State().StatusText, "Hora de salida: 15:45");
    EXPECT_EQ(tray.loads, 1);
    ASSERT_FALSE(view.captions.empty());
    EXPECT_EQ(view.captions.back(), "VendrakoTimer 3.52");
    EXPECT_EQ(app.Paths().AppFolder, folder.Folder());
    EXPECT_TRUE(dialogs.Shown().empty());
}

TEST_F(AppTest, TheStartUpBackupAndSaveShowTheBusyCaptionWhileTheyRun) {
    folder.WriteFile("LOG/2024.01.Enero.htm", "<html>");
    App& app = MakeApp();
    ASSERT_EQ(app.Start(""), Outcome::Continue);
    const std::vector<std::string> expected{"VendrakoTimer 3.52", "...procesando...", "VendrakoTimer 3.52",
                                            "...procesando...", "VendrakoTimer 3.52"};
    EXPECT_EQ(view.captions, expected);
    EXPECT_EQ(folder.ReadFile("Backup/2024.01.Enero.htm"), "<html>");
}

struct CommandLineCase {
    const char* command_line;
    bool backs_up;
};

class StartUpBackups : public AppTest, public ::testing::WithParamInterface<CommandLineCase> {};

TEST_P(StartUpBackups, OnlyTheExactDeveloperCommandLineSkipsThem) {
    folder.WriteFile("LOG/TIMER.LOG", "line\r\n");
    ASSERT_EQ(MakeApp().Start(GetParam().command_line), Outcome::Continue);
    EXPECT_EQ(folder.Exists("Backup/TIMER.LOG"), GetParam().backs_up);
}

INSTANTIATE_TEST_SUITE_P(CommandLines, StartUpBackups,
                         ::testing::Values(CommandLineCase{"", true}, CommandLineCase{"DESA", false},
                                           CommandLineCase{"desa", true}, CommandLineCase{"Desa", true},
                                           CommandLineCase{"DESA x", true}, CommandLineCase{" DESA", true}));

TEST_F(AppTest, AWrongDateFormatEndsTheStartBeforeAnyFileIsTouched) {
    locale.format = "yyyy-MM-dd";
    folder.WriteFile("LOG/TIMER.LOG", "line\r\n");
    const auto before = FolderListing();
    App& app = MakeApp();
    EXPECT_EQ(app.Start(""), Outcome::Exit);
    EXPECT_EQ(dialogs.Texts(), std::vector<std::string>{kWrongFormat});
    EXPECT_FALSE(app.State().TimerEnabled);
    app.Shutdown(true);  // the closing path does not run for a start that never finished
    EXPECT_EQ(FolderListing(), before);
}

TEST_F(AppTest, ASecondInstanceSaysSoAndTouchesNothing) {
    lock.held_elsewhere = true;
    locale.format = "nonsense";  // proves the lock is checked before anything else
    folder.WriteFile("LOG/TIMER.LOG", "line\r\n");
    const auto before = FolderListing();
    App& app = MakeApp();
    EXPECT_EQ(app.Start(""), Outcome::Exit);
    ASSERT_EQ(dialogs.Shown().size(), 1u);
    EXPECT_EQ(dialogs.Shown()[0].text, "VendrakoTimer ya se está ejecutando.");
    EXPECT_EQ(dialogs.Shown()[0].icon, MsgIcon::Exclamation);
    app.Shutdown(true);
    EXPECT_EQ(FolderListing(), before);
    EXPECT_TRUE(view.captions.empty());
}

TEST_F(AppTest, AnAlarmCountMismatchEndsTheStartWithTheTimerOff) {
    folder.WriteFile("VendrakoTimer.ini", "[GENERAL]\r\nNUM_ALARMAS=3\r\n[ALARMAS]\r\nALA_001=a\r\nALA_002=b\r\n");
    App& app = MakeApp();
    EXPECT_EQ(app.Start("DESA"), Outcome::Exit);
    EXPECT_FALSE(app.State().TimerEnabled);
    ASSERT_EQ(dialogs.Shown().size(), 1u);
    EXPECT_EQ(dialogs.Shown()[0].title, "ATENCIÓN!");
}

TEST_F(AppTest, TheScanHookRunsOnThe301stTickAndTheCountRestarts) {
    App& app = MakeApp();
    ASSERT_EQ(app.Start("DESA"), Outcome::Continue);
    int scans = 0;
    app.SetScanHook([&] { ++scans; });
    for (int tick = 1; tick <= 300; ++tick) {
        ASSERT_EQ(app.Tick(), Outcome::Continue);
    }
    EXPECT_EQ(scans, 0);
    EXPECT_EQ(app.State().TickCounter, 300);
    app.Tick();
    EXPECT_EQ(scans, 1);
    EXPECT_EQ(app.State().TickCounter, 0);
    for (int tick = 1; tick <= 301; ++tick) {
        app.Tick();
    }
    EXPECT_EQ(scans, 2);
}

TEST_F(AppTest, ChangingTheDateFormatWhileRunningEndsTheProgramAtTheNextTick) {
    App& app = MakeApp();
    ASSERT_EQ(app.Start("DESA"), Outcome::Continue);
    EXPECT_EQ(app.Tick(), Outcome::Continue);
    locale.format = "MM/dd/yyyy";
    EXPECT_EQ(app.Tick(), Outcome::Exit);
    EXPECT_EQ(dialogs.Texts(), std::vector<std::string>{kWrongFormat});
}

TEST_F(AppTest, ShutdownMirrorsTheLogFolderOnce) {
    App& app = MakeApp();
    ASSERT_EQ(app.Start("DESA"), Outcome::Continue);
    folder.WriteFile("LOG/TAREAS.LOG", "t\r\n");
    view.captions.clear();
    app.Shutdown(false);
    EXPECT_EQ(folder.ReadFile("Backup/TAREAS.LOG"), "t\r\n");
    app.Shutdown(false);
    EXPECT_EQ(view.captions.size(), 2u) << "the second call must not run the closing path again";
    EXPECT_TRUE(dialogs.Shown().empty());
}

}  // namespace
}  // namespace vt
