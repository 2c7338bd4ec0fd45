// The workday as App runs it: the start of a day, typed clock-ins, the weekly schedule and
// the departure on every tick.
#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>

#include "app_harness.h"
#include "workday/departure.h"

namespace vt {
namespace {

constexpr const char* kContinuousNow = "Has cambiado a jornada continua.\r\nSe borrarán los fichajes de la tarde.";

class WorkdayAppTest : public ::testing::Test, protected test::AppHarness {
protected:
    WorkdayAppTest() { clock.Set(6, 3, 2024, 8, 12); }  // a Wednesday

    // Starts on a settings file with these GENERAL values and this Wednesday, and forgets the
    // message boxes of the start-up.
    void StartWith(const std::string& general, const std::string& wednesday = "08:00|P") {
        folder.WriteFile("VendrakoTimer.ini",
                         "[GENERAL]\r\n" + general + "[CONFIG]\r\nMIERCOLES=" + wednesday + "\r\n");
        ASSERT_EQ(Start(), Outcome::Continue);
        dialogs.Forget();
    }
    // Every save leaves a copy of the previous file in the backup folder.
    long BackupCount() const {
        const auto copies = std::filesystem::directory_iterator(folder.Path("Backup"));
        return std::distance(begin(copies), end(copies));
    }
    bool FileHas(const std::string& text) const { return SettingsFile().find(text) != std::string::npos; }
};

TEST_F(WorkdayAppTest, ARestartOnTheSameDayKeepsTheValues) {
    StartWith("FECHA=06-03-24\r\nENTRADA1=07:00\r\nSALIDA1=13:00\r\nENTRADA2=13:30\r\n", "07:30|P");
    EXPECT_EQ(view.clock_ins, (std::array<std::string, 3>{"07:00", "13:00", "13:30"}));
    EXPECT_EQ(view.afternoon_locked, false);
    EXPECT_EQ(view.departure_label, "15:00");
    EXPECT_EQ(app->State().DepartureStage, 5);
}

TEST_F(WorkdayAppTest, TheTickFollowsTheClockThroughTheStages) {
    StartWith("FECHA=06-03-24\r\nENTRADA1=07:45\r\n", "08:00|C");
    clock.Set(6, 3, 2024, 15, 34, 59);
    app->Tick();
    EXPECT_EQ(app->State().DepartureStage, 5);
    clock.AdvanceSeconds(1);
    app->Tick();
    EXPECT_EQ(app->State().DepartureStage, 6);
}

TEST_F(WorkdayAppTest, TheInteractiveCheckReadsTheBoxesAndSaysWhy) {
    StartWith("FECHA=06-03-24\r\nENTRADA1=08:00\r\n");
    view.typed = {"08:00", "", "15:00"};
    EXPECT_TRUE(app->CheckClockIns(false)) << "the stored values are fine";
    EXPECT_TRUE(dialogs.Shown().empty());
    EXPECT_FALSE(app->CheckClockIns(true));
    EXPECT_EQ(dialogs.Texts(), std::vector<std::string>{"No puede haber fichajes intermedios vacíos."});
}

}  // namespace
}  // namespace vt
