// The workday as App runs it: the start of a day, typed clock-ins, the weekly schedule and
// the departure on every tick.
#include <gtest/gtest.h>

#include "fake_clock.h"
#include "fake_ports.h"
#include "scripted_dialogs.h"
#include "shell/app.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

using test::FakeClock;

class WorkdayAppTest : public ::testing::Test {
protected:
    WorkdayAppTest() {
        clock.Set(6, 3, 2024, 8, 12);  // a Wednesday
    }
    void WriteSettings(const std::string& general, const std::string& config = "") {
        folder.WriteFile("VendrakoTimer.ini", "[GENERAL]\r\n" + general + "[CONFIG]\r\n" + config);
    }
    Outcome Start() {
        app = std::make_unique<App>(AppPorts{clock, dialogs, locale, lock, folder.ExecutablePath()}, view, tray);
        return app->Start("DESA");
    }
    std::string SettingsFile() const { return folder.ReadFile("VendrakoTimer.ini"); }
    int BackupCount() const {
        int count = 0;
        for (int slot = 1; slot <= 25; ++slot) {
            char name[40];
            std::snprintf(name, sizeof name, "Backup/VendrakoTimer_%03d.ini", slot);
            count += folder.Exists(name) ? 1 : 0;
        }
        return count;
    }

    test::TempAppFolder folder;
    FakeClock clock;
    test::ScriptedDialogs dialogs;
    test::FakeLocaleInfo locale;
    test::FakeInstanceLock lock;
    test::RecordingMainView view;
    test::RecordingTrayView tray;
    std::unique_ptr<App> app;
};

TEST_F(WorkdayAppTest, AFirstStartOnANewDayRecordsTheArrivalAndWritesTheDate) {
    WriteSettings("FECHA=05-03-24\r\nENTRADA1=07:00\r\nSALIDA1=13:00\r\nENTRADA2=14:00\r\n");
    ASSERT_EQ(Start(), Outcome::Continue);
    const std::array<std::string, 3> expected{"08:12", "", ""};
    EXPECT_EQ(view.clock_ins, expected);
    const std::string file = SettingsFile();
    EXPECT_NE(file.find("FECHA=06-03-24\r\n"), std::string::npos) << file;
    EXPECT_NE(file.find("ENTRADA1=08:12\r\nSALIDA1=\r\nENTRADA2=\r\n"), std::string::npos) << file;
    EXPECT_EQ(view.departure_label, "16:12");
    EXPECT_EQ(view.status_line, "Hora de salida: 16:12");
    EXPECT_EQ(view.afternoon_locked, true);
}

TEST_F(WorkdayAppTest, ARestartOnTheSameDayKeepsTheValues) {
    WriteSettings("FECHA=06-03-24\r\nENTRADA1=07:00\r\nSALIDA1=13:00\r\nENTRADA2=13:30\r\n", "MIERCOLES=07:30|P\r\n");
    ASSERT_EQ(Start(), Outcome::Continue);
    const std::array<std::string, 3> expected{"07:00", "13:00", "13:30"};
    EXPECT_EQ(view.clock_ins, expected);
    EXPECT_EQ(view.afternoon_locked, false);
    EXPECT_EQ(view.departure_label, "15:00");
    EXPECT_EQ(app->State().DepartureStage, 5);
}

TEST_F(WorkdayAppTest, AnUnknownDayModeLeavesTheBoxesAsTheyAre) {
    WriteSettings("FECHA=06-03-24\r\nENTRADA1=07:00\r\n", "MIERCOLES=07:30|X\r\n");
    ASSERT_EQ(Start(), Outcome::Continue);
    EXPECT_FALSE(view.afternoon_locked.has_value());
}

TEST_F(WorkdayAppTest, TheTickFollowsTheClockThroughTheStages) {
    WriteSettings("FECHA=06-03-24\r\nENTRADA1=07:45\r\n", "MIERCOLES=08:00|C\r\n");
    ASSERT_EQ(Start(), Outcome::Continue);
    clock.Set(6, 3, 2024, 15, 34, 59);
    app->Tick();
    EXPECT_EQ(app->State().DepartureStage, 5);
    clock.AdvanceSeconds(1);
    app->Tick();
    EXPECT_EQ(app->State().DepartureStage, 6);
    clock.Set(6, 3, 2024, 15, 45);
    app->Tick();
    EXPECT_EQ(app->State().DepartureStage, 11);
    EXPECT_EQ(view.departure_label, "15:45");
}

TEST_F(WorkdayAppTest, TypingASplitDayClockInSavesAndMovesTheDeparture) {
    WriteSettings("FECHA=06-03-24\r\nENTRADA1=08:00\r\n", "MIERCOLES=08:00|P\r\n");
    ASSERT_EQ(Start(), Outcome::Continue);
    EXPECT_EQ(view.departure_label, "...");
    EXPECT_EQ(app->State().DepartureStage, 3);
    EXPECT_EQ(app->LeaveClockIn(1, "14:00").refocus, false);
    EXPECT_EQ(app->LeaveClockIn(2, "15:30").outcome, Outcome::Continue);
    EXPECT_EQ(view.departure_label, "17:30");
    EXPECT_NE(SettingsFile().find("SALIDA1=14:00\r\nENTRADA2=15:30\r\n"), std::string::npos);
}

TEST_F(WorkdayAppTest, AHalfTypedBoxGetsTheFocusBackAndAnUnchangedOneSavesNothing) {
    WriteSettings("FECHA=06-03-24\r\nENTRADA1=08:00\r\n", "MIERCOLES=08:00|P\r\n");
    ASSERT_EQ(Start(), Outcome::Continue);
    const int backups = BackupCount();
    EXPECT_TRUE(app->LeaveClockIn(1, "0830").refocus);
    EXPECT_TRUE(app->LeaveClockIn(1, "8").refocus);
    EXPECT_FALSE(app->LeaveClockIn(0, "08:00").refocus);
    EXPECT_EQ(BackupCount(), backups) << "nothing may have been saved";
    EXPECT_EQ(app->State().settings.Salida1, "");
}

TEST_F(WorkdayAppTest, InconsistentClockInsShowTheErrorOnce) {
    WriteSettings("FECHA=06-03-24\r\nENTRADA1=08:00\r\n", "MIERCOLES=08:00|P\r\n");
    ASSERT_EQ(Start(), Outcome::Continue);
    app->LeaveClockIn(1, "07:00");  // leaving before arriving
    app->Tick();
    app->Tick();
    EXPECT_EQ(dialogs.Texts().size(), 1u);
    EXPECT_EQ(view.departure_label, "(Error. Revisa los fichajes.)");
    EXPECT_EQ(view.status_line, "Error en configuración. Revise los fichajes.");
    EXPECT_EQ(app->State().DepartureStage, 0);
}

TEST_F(WorkdayAppTest, WhileADialogIsOpenLeavingABoxStoresNothing) {
    WriteSettings("FECHA=06-03-24\r\nENTRADA1=08:00\r\n", "MIERCOLES=08:00|P\r\n");
    ASSERT_EQ(Start(), Outcome::Continue);
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
    WriteSettings("FECHA=06-03-24\r\nENTRADA1=08:00\r\nSALIDA1=13:00\r\n", "MIERCOLES=08:00|P\r\n");
    ASSERT_EQ(Start(), Outcome::Continue);
    const int backups = BackupCount();
    view.edit_schedule = [](auto&, auto& modes) {
        modes[3] = "C";
        return false;
    };
    EXPECT_EQ(app->OpenSchedule(), Outcome::Continue);
    EXPECT_EQ(view.schedule_opened, 1);
    EXPECT_EQ(dialogs.Texts(),
              std::vector<std::string>{"Has cambiado a jornada continua.\r\nSe borrarán los fichajes de la tarde."});
    EXPECT_EQ(app->State().settings.Salida1, "");
    EXPECT_EQ(view.afternoon_locked, true);
    EXPECT_NE(SettingsFile().find("SALIDA1=\r\n"), std::string::npos);
    EXPECT_NE(SettingsFile().find("MIERCOLES=08:00|C\r\n"), std::string::npos);
    EXPECT_EQ(BackupCount(), backups + 2) << "saved after the dialog and again by the refresh";
}

TEST_F(WorkdayAppTest, AcceptedHoursMoveTheDeparture) {
    WriteSettings("FECHA=06-03-24\r\nENTRADA1=08:00\r\n", "MIERCOLES=08:00|C\r\n");
    ASSERT_EQ(Start(), Outcome::Continue);
    view.edit_schedule = [](auto& hours, auto&) {
        hours[3] = "06:30";
        return true;
    };
    app->OpenSchedule();
    EXPECT_EQ(view.departure_label, "14:30");
    EXPECT_EQ(app->State().TodayHours, "06:30");
    EXPECT_TRUE(dialogs.Shown().empty());
}

TEST_F(WorkdayAppTest, TheInteractiveCheckReadsTheBoxesAndSaysWhy) {
    WriteSettings("FECHA=06-03-24\r\nENTRADA1=08:00\r\n", "MIERCOLES=08:00|P\r\n");
    ASSERT_EQ(Start(), Outcome::Continue);
    view.typed = {"08:00", "", "15:00"};
    EXPECT_TRUE(app->CheckClockIns(false)) << "the stored values are fine";
    EXPECT_TRUE(dialogs.Shown().empty());
    EXPECT_FALSE(app->CheckClockIns(true));
    ASSERT_EQ(dialogs.Shown().size(), 1u);
    EXPECT_EQ(dialogs.Shown()[0].text, "No puede haber fichajes intermedios vacíos.");
    EXPECT_EQ(dialogs.Shown()[0].icon, MsgIcon::Exclamation);
}

}  // namespace
}  // namespace vt
