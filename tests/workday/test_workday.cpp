#include "workday/workday.h"

#include <gtest/gtest.h>

#include "scripted_dialogs.h"
#include "workday/departure.h"

namespace vt {
namespace {

class WorkdayTest : public ::testing::Test {
protected:
    WorkdayTest() {
        // Wednesdays are split days of 07:30 in this schedule.
        state.settings.DayHours[3] = "07:30";
        state.settings.DayMode[3] = "P";
    }
    AppState state;
    test::ScriptedDialogs dialogs;
    // Wednesday 6 March 2024, 08:12.
    const DateTime now = MakeDateTime(MakeDate(6, 3, 2024), 8, 12, 40);
};

TEST_F(WorkdayTest, ANewDayRecordsTheArrivalAndClearsTheAfternoon) {
    state.settings.WorkDate = "05-03-24";
    state.settings.Entrada1 = "07:00";
    state.settings.Salida1 = "13:00";
    state.settings.Entrada2 = "14:00";
    SettleWorkDate(state, now);
    EXPECT_EQ(state.settings.WorkDate, "06-03-24");
    EXPECT_EQ(state.settings.Entrada1, "08:12");
    EXPECT_EQ(state.settings.Salida1, "");
    EXPECT_EQ(state.settings.Entrada2, "");
    EXPECT_EQ(state.TodayHours, "07:30");
    EXPECT_EQ(state.TodayMode, "P");
}

TEST_F(WorkdayTest, ARestartOnTheSameDayKeepsTheClockIns) {
    state.settings.WorkDate = "06-03-24";
    state.settings.Entrada1 = "07:00";
    state.settings.Salida1 = "13:00";
    SettleWorkDate(state, now);
    EXPECT_EQ(state.settings.Entrada1, "07:00");
    EXPECT_EQ(state.settings.Salida1, "13:00");
    EXPECT_EQ(state.TodayMode, "P");
}

TEST_F(WorkdayTest, AnEmptyOrUnreadableWorkDateStartsTodayWithTheArrival) {
    for (const char* stored : {"", "garbage", "31-02-24"}) {
        state.settings.WorkDate = stored;
        state.settings.Entrada1.clear();
        state.TodayHours.clear();
        SettleWorkDate(state, now);
        EXPECT_EQ(state.settings.WorkDate, "06-03-24") << stored;
        EXPECT_EQ(state.settings.Entrada1, "08:12") << stored;
        EXPECT_EQ(state.TodayHours, "07:30") << stored;
    }
}

TEST_F(WorkdayTest, TheClockInErrorIsShownOnceUntilItsFlagIsCleared) {
    state.TodayHours = "08:00";
    state.TodayMode = "P";
    state.settings.Salida1 = "13:00";  // no arrival before it
    UpdateDeparture(state, 600, dialogs);
    UpdateDeparture(state, 601, dialogs);
    ASSERT_EQ(dialogs.Shown().size(), 1u);
    EXPECT_EQ(dialogs.Shown()[0].text,
              "Hay errores en los fichajes. Revisa que:\r\n\r\n - Todos los fichajes sean consecutivos.\r\n"
              " - No haya fichajes intermedios vacíos.");
    EXPECT_EQ(dialogs.Shown()[0].icon, MsgIcon::Exclamation);
    EXPECT_EQ(state.DepartureStage, 0);
    EXPECT_EQ(state.DepartureLabel, "(Error. Revisa los fichajes.)");
    EXPECT_EQ(state.StatusText, "Error en configuración. Revise los fichajes.");
    state.ClockInErrorReported = false;
    UpdateDeparture(state, 602, dialogs);
    EXPECT_EQ(dialogs.Shown().size(), 2u);
}

TEST_F(WorkdayTest, ScheduleMadeContinuousClearsTheAfternoonWithAWord) {
    state.settings.WorkDate = "06-03-24";
    state.settings.DayMode[3] = "C";
    state.settings.Entrada1 = "08:00";
    state.settings.Salida1 = "13:00";
    ApplyScheduleToToday(state, dialogs);
    EXPECT_EQ(state.TodayMode, "C");
    EXPECT_EQ(state.settings.Salida1, "");
    ASSERT_EQ(dialogs.Shown().size(), 1u);
    EXPECT_EQ(dialogs.Shown()[0].text, "Has cambiado a jornada continua.\r\nSe borrarán los fichajes de la tarde.");
    EXPECT_EQ(dialogs.Shown()[0].icon, MsgIcon::Information);
}

TEST_F(WorkdayTest, ContinuousDayWithOnlyTheArrivalSaysNothing) {
    state.settings.WorkDate = "06-03-24";
    state.settings.DayMode[3] = "C";
    state.settings.Entrada1 = "08:00";
    ApplyScheduleToToday(state, dialogs);
    EXPECT_TRUE(dialogs.Shown().empty());
    EXPECT_EQ(state.settings.Entrada1, "08:00");
}

TEST_F(WorkdayTest, SplitDayKeepsTheAfternoon) {
    state.settings.WorkDate = "06-03-24";
    state.settings.Salida1 = "13:00";
    ApplyScheduleToToday(state, dialogs);
    EXPECT_EQ(state.settings.Salida1, "13:00");
    EXPECT_TRUE(dialogs.Shown().empty());
}

TEST(Workday, WeekdayNamesStartOnMonday) {
    EXPECT_EQ(WeekdayName(MakeDate(4, 3, 2024)), "Lunes");
    EXPECT_EQ(WeekdayName(MakeDate(6, 3, 2024)), "Miércoles");
    EXPECT_EQ(WeekdayName(MakeDate(9, 3, 2024)), "Sábado");
    EXPECT_EQ(WeekdayName(MakeDate(10, 3, 2024)), "Domingo");
}

TEST(Workday, OnlyEmptyOrWholeTimesAreStored) {
    EXPECT_TRUE(IsStorableClockIn(""));
    EXPECT_TRUE(IsStorableClockIn("08:30"));
    EXPECT_FALSE(IsStorableClockIn("0830"));
    EXPECT_FALSE(IsStorableClockIn("8"));
}

TEST(Workday, StoredTimesMapByIndex) {
    Settings s;
    StoreTime(s, 0, "08:00");
    StoreTime(s, 1, "13:00");
    StoreTime(s, 2, "14:00");
    EXPECT_EQ(s.Entrada1, "08:00");
    EXPECT_EQ(s.Salida1, "13:00");
    EXPECT_EQ(s.Entrada2, "14:00");
    EXPECT_EQ(StoredTime(s, 1), "13:00");
}

}  // namespace
}  // namespace vt
