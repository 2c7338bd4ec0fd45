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

TEST_F(WorkdayAppTest, AFirstStartOnANewDayRecordsTheArrivalAndWritesTheDate) {
    StartWith("FECHA=05-03-24\r\nENTRADA1=07:00\r\nSALIDA1=13:00\r\nENTRADA2=14:00\r\n", "08:00|C");
    EXPECT_EQ(view.clock_ins, (std::array<std::string, 3>{"08:12", "", ""}));
    EXPECT_TRUE(FileHas("FECHA=06-03-24\r\nENTRADA1=08:12\r\nSALIDA1=\r\nENTRADA2=\r\n")) << SettingsFile();
    EXPECT_EQ(view.departure_label, "16:12");
    EXPECT_EQ(view.status_line, "Hora de salida: 16:12");
    EXPECT_EQ(view.afternoon_locked, true);
}

TEST_F(WorkdayAppTest, ARestartOnTheSameDayKeepsTheValues) {
    StartWith("FECHA=06-03-24\r\nENTRADA1=07:00\r\nSALIDA1=13:00\r\nENTRADA2=13:30\r\n", "07:30|P");
    EXPECT_EQ(view.clock_ins, (std::array<std::string, 3>{"07:00", "13:00", "13:30"}));
    EXPECT_EQ(view.afternoon_locked, false);
    EXPECT_EQ(view.departure_label, "15:00");
    EXPECT_EQ(app->State().DepartureStage, 5);
}

TEST_F(WorkdayAppTest, AnUnknownDayModeLeavesTheBoxesAsTheyAre) {
    StartWith("FECHA=06-03-24\r\nENTRADA1=07:00\r\n", "07:30|X");
    EXPECT_FALSE(view.afternoon_locked.has_value());
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

// A half-typed box gets the focus back and an unchanged one saves nothing; a typed split-day
// clock-in is saved and moves the departure.
TEST_F(WorkdayAppTest, TypingAClockInSavesItAndMovesTheDeparture) {
    StartWith("FECHA=06-03-24\r\nENTRADA1=08:00\r\n");
    const long backups = BackupCount();
    EXPECT_TRUE(app->LeaveClockIn(1, "0830").refocus);
    EXPECT_TRUE(app->LeaveClockIn(1, "8").refocus);
    EXPECT_FALSE(app->LeaveClockIn(0, "08:00").refocus);
    EXPECT_EQ(BackupCount(), backups) << "nothing may have been saved";
    EXPECT_EQ(view.departure_label, "...");
    EXPECT_EQ(app->State().DepartureStage, 3) << "still no Salida 1";
    EXPECT_FALSE(app->LeaveClockIn(1, "14:00").refocus);
    EXPECT_EQ(app->LeaveClockIn(2, "15:30").outcome, Outcome::Continue);
    EXPECT_EQ(view.departure_label, "17:30");
    EXPECT_TRUE(FileHas("SALIDA1=14:00\r\nENTRADA2=15:30\r\n"));
}

// Once for each time the order is broken: put right, then broken again, it is shown again.
TEST_F(WorkdayAppTest, InconsistentClockInsShowTheErrorOnceEachTimeTheyGoWrong) {
    StartWith("FECHA=06-03-24\r\nENTRADA1=08:00\r\n");
    app->LeaveClockIn(1, "07:00");  // leaving before arriving
    app->Tick();
    app->Tick();
    EXPECT_EQ(dialogs.Shown().size(), 1u);
    EXPECT_EQ(view.departure_label, "(Error. Revisa los fichajes.)");
    EXPECT_EQ(app->State().DepartureStage, 0);
    app->LeaveClockIn(1, "13:00");
    app->Tick();
    EXPECT_EQ(dialogs.Shown().size(), 1u);
    app->LeaveClockIn(2, "12:00");
    app->Tick();
    EXPECT_EQ(dialogs.Texts(), std::vector<std::string>(2, kClockInErrorMessage));
}

// A clock-in that does not read is kept as loaded and named at start-up in the one box that
// names the unreadable agenda entries; one replaced by a new day's arrival is not named.
TEST_F(WorkdayAppTest, AnUnreadableClockInIsKeptAndNamedAtStartUp) {
    for (const char* date : {"06-03-24", "05-03-24"}) {
        SCOPED_TRACE(date);
        dialogs.Forget();
        folder.WriteFile("VendrakoTimer.ini", std::string("[GENERAL]\r\nFECHA=") + date +
                                                  "\r\nENTRADA1=abc\r\nNUM_ALARMAS=1\r\n"
                                                  "[ALARMAS]\r\nALA_001=xx/03/2024 10:00 00 D 14 0 Roto\r\n");
        ASSERT_EQ(Start(), Outcome::Continue);
        const std::string report = dialogs.Texts().at(0);
        EXPECT_NE(report.find("\r\nALA_001=xx/03/2024"), std::string::npos) << report;
        const bool today = std::string(date) == "06-03-24";
        EXPECT_EQ(report.find("\r\nENTRADA1=abc") != std::string::npos, today) << report;
        EXPECT_EQ(view.clock_ins[0], today ? "abc" : "08:12");
        EXPECT_EQ(FileHas("ENTRADA1=abc\r\n"), today);
        app.reset();
    }
}

TEST_F(WorkdayAppTest, WhileADialogIsOpenLeavingABoxStoresNothing) {
    StartWith("FECHA=06-03-24\r\nENTRADA1=08:00\r\n");
    view.edit_schedule = [&](auto&, auto&) {
        EXPECT_FALSE(app->LeaveClockIn(1, "12:00").refocus);
        return false;
    };
    app->OpenSchedule();
    EXPECT_EQ(app->State().settings.Salida1, "");
    EXPECT_TRUE(app->State().ClockInBoxesActive);
}

TEST_F(WorkdayAppTest, CancellingTheScheduleStillSavesAndClearsAContinuousAfternoon) {
    // The file says split, memory is made continuous behind the dialog's back: the check
    // looks only at today's mode and the boxes, whatever the dialog answered.
    StartWith("FECHA=06-03-24\r\nENTRADA1=08:00\r\nSALIDA1=13:00\r\n");
    const long backups = BackupCount();
    view.edit_schedule = [](auto&, auto& modes) {
        modes[3] = "C";
        return false;
    };
    EXPECT_EQ(app->OpenSchedule(), Outcome::Continue);
    EXPECT_EQ(view.schedule_opened, 1);
    EXPECT_EQ(dialogs.Texts(), std::vector<std::string>{kContinuousNow});
    EXPECT_EQ(view.afternoon_locked, true);
    EXPECT_TRUE(FileHas("SALIDA1=\r\n"));
    EXPECT_TRUE(FileHas("MIERCOLES=08:00|C\r\n"));
    EXPECT_EQ(BackupCount(), backups + 2) << "saved after the dialog and again by the refresh";
}

TEST_F(WorkdayAppTest, AcceptedHoursMoveTheDeparture) {
    StartWith("FECHA=06-03-24\r\nENTRADA1=08:00\r\n", "08:00|C");
    view.edit_schedule = [](auto& hours, auto&) {
        hours[3] = "06:30";
        return true;
    };
    app->OpenSchedule();
    EXPECT_EQ(view.departure_label, "14:30");
    EXPECT_TRUE(dialogs.Shown().empty());
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
