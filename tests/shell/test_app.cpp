#include "shell/app.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "app_harness.h"
#include "platform/locale_info.h"

namespace vt {
namespace {

using Lines = std::vector<std::string>;

constexpr const char* kWrongFormat =
    "Para que el programa funcione correctamente el formato de la fecha debe ser 'dd/MM/yyyy'.";

class AppTest : public ::testing::Test, protected test::AppHarness {
protected:
    std::vector<std::string> FolderListing() const {
        std::vector<std::string> names;
        for (const auto& e : std::filesystem::recursive_directory_iterator(folder.Folder())) {
            names.push_back(e.path().string());
        }
        return names;
    }
    // Starts, ends the start as expected, and proves that no file was touched on the way.
    void ExpectStartEndsUntouched() {
        folder.WriteFile("LOG/TIMER.LOG", "line\r\n");
        const auto before = FolderListing();
        EXPECT_EQ(MakeApp().Start(""), Outcome::Exit);
        EXPECT_FALSE(app->State().TimerEnabled);
        app->Shutdown(true);  // the closing path does not run for a start that never finished
        EXPECT_EQ(FolderListing(), before);
    }
};

class DateFormatCheck : public ::testing::TestWithParam<std::pair<std::string_view, bool>> {};

TEST_P(DateFormatCheck, AcceptsOnlyDayMonthYearWithSlashes) {
    const auto [format, accepted] = GetParam();
    test::FakeLocaleInfo locale;
    locale.format = format;
    test::ScriptedDialogs dialogs;
    EXPECT_EQ(CheckDateFormat(locale, dialogs), accepted);
    ASSERT_EQ(dialogs.Texts(), accepted ? Lines{} : Lines{kWrongFormat});
    if (!accepted) {
        EXPECT_EQ(dialogs.Shown()[0].icon, MsgIcon::Critical);
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, DateFormatCheck,
                         ::testing::Values(std::pair{"dd/MM/yyyy", true}, std::pair{"DD/MM/YYYY", true},
                                           std::pair{"dd/mm/YYYY", true}, std::pair{"d/M/yyyy", false},
                                           std::pair{"dd-MM-yyyy", false}, std::pair{"yyyy/MM/dd", false},
                                           std::pair{"dd/MM/yy", false}, std::pair{"MM/dd/yyyy", false},
                                           std::pair{"", false}, std::pair{"dd/MM/yyyy ", false}));

// What a desktop's time locale stands for, from its own short date pattern and its country's
// (as Qt 6.4 gives them); a refused one keeps its own pattern, so the check above refuses it.
TEST(DesktopShortDate, DayMonthYearWithSlashesPassesWhateverTheDigitsAndMonthFirstNever) {
    struct Case {
        const char* locale;
        const char* own;
        const char* country;
        const char* expected;
    };
    for (const Case& c : std::vector<Case>{
             {"es_ES", "d/M/yy", "d/M/yy", "dd/MM/yyyy"},
             {"ca_ES", "d/M/yy", "d/M/yy", "dd/MM/yyyy"},
             {"gl_ES", "dd/MM/yy", "d/M/yy", "dd/MM/yyyy"},
             {"eu_ES (year-first, in Spain)", "yy/M/d", "d/M/yy", "dd/MM/yyyy"},
             {"es_MX", "dd/MM/yy", "dd/MM/yy", "dd/MM/yyyy"},
             {"fr_FR", "dd/MM/yyyy", "dd/MM/yyyy", "dd/MM/yyyy"},
             {"en_GB", "dd/MM/yyyy", "dd/MM/yyyy", "dd/MM/yyyy"},
             {"es_US", "d/M/yyyy", "M/d/yy", "dd/MM/yyyy"},
             {"fr_BE", "d/MM/yy", "d/MM/yyyy", "dd/MM/yyyy"},
             {"en_US", "M/d/yy", "M/d/yy", "M/d/yy"},
             {"month-first in a day-first country", "M/d/yy", "d/M/yy", "M/d/yy"},
             {"de_DE", "dd.MM.yy", "dd.MM.yy", "dd.MM.yy"},
             {"en_CA", "yyyy-MM-dd", "yyyy-MM-dd", "yyyy-MM-dd"},
             {"zh_CN", "yyyy/M/d", "yyyy/M/d", "yyyy/M/d"},
             {"C", "d MMM yyyy", "", "d MMM yyyy"},
             {"no date at all, day-first country", "", "d/M/yy", ""},
             {"three-letter day", "ddd/MM/yyyy", "", "ddd/MM/yyyy"},
             {"three-digit year", "dd/MM/yyy", "", "dd/MM/yyy"},
             {"text after the year", "d/M/yy.", "", "d/M/yy."},
             {"day and month only", "dd/MM", "", "dd/MM"},
         }) {
        EXPECT_EQ(DesktopShortDateFormat(c.own, c.country), c.expected) << c.locale;
    }
}

TEST_F(AppTest, StartLoadsTheSettingsAndRunsTheBusyStepsUnderTheBusyCaption) {
    folder.WriteFile("VendrakoTimer.ini",
                     "[GENERAL]\r\nFECHA=02-01-24\r\nENTRADA1=07:45\r\nNUM_ALARMAS=1\r\n[ALARMAS]\r\n"
                     "ALA_001=15/03/2024 09:30 00 D 14 0 Cita\r\n");
    folder.WriteFile("LOG/2024.01.Enero.htm", "<html>");
    ASSERT_EQ(MakeApp().Start(""), Outcome::Continue);
    EXPECT_EQ(app->State().settings.Alarms.Count(), 1);
    EXPECT_EQ(app->State().TimerIntervalMs, 1000);
    EXPECT_TRUE(app->State().TimerEnabled);
    EXPECT_EQ(app->State().StatusText, "Hora de salida: 15:45");
    EXPECT_EQ(tray.loads, 1);
    // The mirror of the log folder and the save, each under the busy caption.
    EXPECT_EQ(view.captions, (Lines{kMainCaption, kBusyCaption, kMainCaption, kBusyCaption, kMainCaption}));
    EXPECT_EQ(folder.ReadFile("Backup/2024.01.Enero.htm"), "<html>");
}

TEST(StartUpBackups, OnlyTheExactDeveloperCommandLineSkipsThem) {
    for (const auto& [command_line, backs_up] : std::vector<std::pair<std::string, bool>>{
             {"", true}, {"DESA", false}, {"desa", true}, {"DESA x", true}, {" DESA", true}}) {
        test::AppHarness harness;
        harness.folder.WriteFile("LOG/TIMER.LOG", "line\r\n");
        ASSERT_EQ(harness.MakeApp().Start(command_line), Outcome::Continue);
        EXPECT_EQ(harness.folder.Exists("Backup/TIMER.LOG"), backs_up) << "\"" << command_line << "\"";
    }
}

TEST_F(AppTest, AWrongDateFormatEndsTheStartBeforeAnyFileIsTouched) {
    locale.format = "yyyy-MM-dd";
    ExpectStartEndsUntouched();
    EXPECT_EQ(dialogs.Texts(), Lines{kWrongFormat});
}

TEST_F(AppTest, ASecondInstanceSaysSoAndTouchesNothing) {
    lock.held_elsewhere = true;
    locale.format = "nonsense";  // proves the lock is checked before anything else
    ExpectStartEndsUntouched();
    ASSERT_EQ(dialogs.Texts(), Lines{"VendrakoTimer ya se está ejecutando."});
    EXPECT_EQ(dialogs.Shown()[0].icon, MsgIcon::Exclamation);
    EXPECT_TRUE(view.captions.empty());
}

TEST_F(AppTest, AnAlarmCountMismatchEndsTheStartWithTheTimerOff) {
    folder.WriteFile("VendrakoTimer.ini", "[GENERAL]\r\nNUM_ALARMAS=3\r\n[ALARMAS]\r\nALA_001=a\r\nALA_002=b\r\n");
    EXPECT_EQ(Start(), Outcome::Exit);
    EXPECT_FALSE(app->State().TimerEnabled);
    ASSERT_EQ(dialogs.Shown().size(), 1u);
    EXPECT_EQ(dialogs.Shown()[0].title, "ATENCIÓN!");
}

TEST_F(AppTest, TheScanHookRunsOnThe301stTickAndTheCountRestarts) {
    ASSERT_EQ(Start(), Outcome::Continue);
    int tick = 0;
    std::vector<int> scans;
    app->SetScanHook([&] { scans.push_back(tick); });
    for (tick = 1; tick <= 602; ++tick) {
        ASSERT_EQ(app->Tick(), Outcome::Continue);
    }
    EXPECT_EQ(scans, (std::vector<int>{301, 602}));
}

TEST_F(AppTest, ChangingTheDateFormatWhileRunningEndsTheProgramAtTheNextTick) {
    ASSERT_EQ(Start(), Outcome::Continue);
    EXPECT_EQ(app->Tick(), Outcome::Continue);
    dialogs.Forget();
    locale.format = "MM/dd/yyyy";
    EXPECT_EQ(app->Tick(), Outcome::Exit);
    EXPECT_EQ(dialogs.Texts(), Lines{kWrongFormat});
}

// Backups that fail are told once per run and never stop a save; a save that does not reach the
// disk is told once, tried again each minute and at shutdown, and copies the old file only once.
TEST_F(AppTest, FailingBackupsAreToldOnceAndAFailedSaveIsTriedUntilItLands) {
    folder.WriteFile("Backup", "not a folder");
    ASSERT_EQ(Start(), Outcome::Continue);
    const auto told = [this](const std::string& start) {
        const Lines texts = dialogs.Texts();
        return std::count_if(texts.begin(), texts.end(),
                             [&](const std::string& text) { return text.starts_with(start); });
    };
    app->LeaveClockIn(0, "07:45");
    app->LeaveClockIn(0, "07:50");
    EXPECT_EQ(told("No se pueden hacer copias de seguridad en "), 1);
    EXPECT_NE(SettingsFile().find("ENTRADA1=07:50"), std::string::npos);

    std::filesystem::remove(folder.Path("Backup"));
    const std::string blocker = folder.Path("VendrakoTimer.ini.tmp/inside");  // the new file cannot be written
    std::filesystem::create_directories(blocker);
    app->LeaveClockIn(1, "13:00");
    app->LeaveClockIn(2, "14:00");
    EXPECT_EQ(told("No se ha podido guardar la configuraci\u00F3n en:"), 1);
    for (int tick = 1; tick <= 120; ++tick) {
        ASSERT_EQ(app->Tick(), Outcome::Continue);
        if (tick == 90) {
            std::filesystem::remove_all(folder.Path("VendrakoTimer.ini.tmp"));
        }
        // Landed at the first retry after the way was cleared, not before.
        EXPECT_EQ(SettingsFile().find("ENTRADA2=14:00") != std::string::npos, tick >= 120) << tick;
    }
    EXPECT_FALSE(app->State().Store.SavePending);
    EXPECT_EQ(told("No se ha podido guardar la configuraci\u00F3n en:"), 1);
    EXPECT_EQ(std::filesystem::directory_iterator(folder.Path("Backup"))->path().filename(), "VendrakoTimer_001.ini");
    EXPECT_FALSE(folder.Exists("Backup/VendrakoTimer_002.ini"));

    // Still failing when the program closes: the user hears that the last change is lost.
    std::filesystem::create_directories(blocker);
    app->LeaveClockIn(2, "14:30");
    dialogs.Forget();
    app->Shutdown(true);
    EXPECT_EQ(told("Los \u00FAltimos cambios no se han podido guardar en:\r\n" + folder.Path("VendrakoTimer.ini") +
                   "\r\n\r\nSe perder\u00E1n al cerrar el programa."),
              1);
}

TEST_F(AppTest, ShutdownMirrorsTheLogFolderOnce) {
    ASSERT_EQ(Start(), Outcome::Continue);
    folder.WriteFile("LOG/TAREAS.LOG", "t\r\n");
    view.captions.clear();
    dialogs.Forget();
    app->Shutdown(false);
    EXPECT_EQ(folder.ReadFile("Backup/TAREAS.LOG"), "t\r\n");
    app->Shutdown(false);
    EXPECT_EQ(view.captions.size(), 2u) << "the second call must not run the closing path again";
    EXPECT_TRUE(dialogs.Shown().empty());
}

}  // namespace
}  // namespace vt
