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

}  // namespace
}  // namespace vt
