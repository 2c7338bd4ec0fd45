#include "workday/workday.h"

#include <gtest/gtest.h>

#include "scripted_dialogs.h"
#include "workday/clock_ins.h"
#include "workday/departure.h"

namespace vt {
namespace {

class WorkdayTest : public ::testing::Test {
protected:
    WorkdayTest() {
        // Wednesdays are split days of 07:30 in this schedule.
        state.settings.DayHours[3] = "07:30";
        state.settings.DayMode[3] = "P";
        state.settings.Entrada1 = "07:00";
        state.settings.Salida1 = "13:00";
        state.settings.Entrada2 = "14:00";
    }
    AppState state;
    test::ScriptedDialogs dialogs;
    // Wednesday 6 March 2024, 08:12.
    const DateTime now = MakeDateTime(MakeDate(6, 3, 2024), 8, 12, 40);
};

class OtherWorkDate : public WorkdayTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(OtherWorkDate, StartsTodayWithTheArrivalAndAnEmptyAfternoon) {
    state.settings.WorkDate = GetParam();
    SettleWorkDate(state, now);
    EXPECT_EQ(state.settings.WorkDate, "06-03-24");
    EXPECT_EQ(state.settings.Entrada1, "08:12");
    EXPECT_EQ(state.settings.Salida1, "");
    EXPECT_EQ(state.settings.Entrada2, "");
    EXPECT_EQ(state.TodayHours, "07:30");
    EXPECT_EQ(state.TodayMode, "P");
}

INSTANTIATE_TEST_SUITE_P(StoredDates, OtherWorkDate, ::testing::Values("05-03-24", "", "garbage", "31-02-24"));

TEST_F(WorkdayTest, ARestartOnTheSameDayKeepsTheClockIns) {
    state.settings.WorkDate = "06-03-24";
    SettleWorkDate(state, now);
    EXPECT_EQ(state.settings.Entrada1, "07:00");
    EXPECT_EQ(state.settings.Salida1, "13:00");
    EXPECT_EQ(state.TodayMode, "P");
}

TEST_F(WorkdayTest, TheClockInErrorIsShownOnceUntilItsFlagIsCleared) {
    state.TodayHours = "08:00";
    state.TodayMode = "P";
    state.settings.Entrada1 = "";  // leaving with no arrival before it
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

// A day made continuous clears the afternoon, with a word only when there was one to clear.
TEST_F(WorkdayTest, AScheduleMadeContinuousClearsTheAfternoon) {
    state.settings.WorkDate = "06-03-24";
    state.settings.Entrada2 = "";
    ApplyScheduleToToday(state, dialogs);  // still split: the afternoon stays
    EXPECT_EQ(state.settings.Salida1, "13:00");
    EXPECT_TRUE(dialogs.Shown().empty());
    state.settings.DayMode[3] = "C";
    ApplyScheduleToToday(state, dialogs);
    EXPECT_EQ(state.TodayMode, "C");
    EXPECT_EQ(state.settings.Entrada1, "07:00");
    EXPECT_EQ(state.settings.Salida1, "");
    ASSERT_EQ(dialogs.Texts(),
              std::vector<std::string>{"Has cambiado a jornada continua.\r\nSe borrarán los fichajes de la tarde."});
    EXPECT_EQ(dialogs.Shown()[0].icon, MsgIcon::Information);
    ApplyScheduleToToday(state, dialogs);  // nothing left to clear: not a word
    EXPECT_EQ(dialogs.Shown().size(), 1u);
}

TEST(Workday, WeekdayNamesStartOnMonday) {
    EXPECT_EQ(WeekdayName(MakeDate(4, 3, 2024)), "Lunes");
    EXPECT_EQ(WeekdayName(MakeDate(6, 3, 2024)), "Miércoles");
    EXPECT_EQ(WeekdayName(MakeDate(10, 3, 2024)), "Domingo");
}

// ---- the departure -------------------------------------------------------------------------

int At(int hour, int minute) {
    return hour * 60 + minute;
}

struct DayCase {
    WorkdayInput clock_ins;
    int now;
    const char* label;
    int stage;
};

class DepartureOfTheDay : public ::testing::TestWithParam<DayCase> {};

TEST_P(DepartureOfTheDay, DependsOnTheModeTheClockInsSoFarAndTheMinutesLeft) {
    const Departure d = ComputeDeparture(GetParam().clock_ins, GetParam().now);
    EXPECT_EQ(d.label, GetParam().label);
    EXPECT_EQ(d.stage, GetParam().stage);
}

const WorkdayInput kFrom0745 = {"08:00", "C", "07:45", "", ""};  // leaving at 15:45

// The stages of the last minutes; a split day adds the break; a continuous one ignores the
// afternoon boxes; past midnight the label wraps but 1680 - 600 minutes are still left. Until
// the departure is known the first empty clock-in decides the stage.
INSTANTIATE_TEST_SUITE_P(
    Cases, DepartureOfTheDay,
    ::testing::Values(DayCase{kFrom0745, At(15, 34), "15:45", 5}, DayCase{kFrom0745, At(15, 35), "15:45", 6},
                      DayCase{kFrom0745, At(15, 36), "15:45", 7}, DayCase{kFrom0745, At(15, 39), "15:45", 7},
                      DayCase{kFrom0745, At(15, 40), "15:45", 8}, DayCase{kFrom0745, At(15, 41), "15:45", 9},
                      DayCase{kFrom0745, At(15, 43), "15:45", 9}, DayCase{kFrom0745, At(15, 44), "15:45", 10},
                      DayCase{kFrom0745, At(15, 45), "15:45", 11}, DayCase{kFrom0745, At(23, 59), "15:45", 11},
                      DayCase{{"08:00", "P", "08:00", "14:00", "15:30"}, At(10, 0), "17:30", 5},
                      DayCase{{"07:30", "C", "08:00", "13:00", "16:00"}, At(10, 0), "15:30", 5},
                      DayCase{{"08:00", "C", "20:00", "", ""}, At(10, 0), "04:00", 5},
                      DayCase{{"08:00", "C", "", "", ""}, At(10, 0), "...", 1},
                      DayCase{{"08:00", "P", "", "", ""}, At(10, 0), "...", 2},
                      DayCase{{"08:00", "P", "08:00", "", ""}, At(10, 0), "...", 3},
                      DayCase{{"08:00", "P", "08:00", "14:00", ""}, At(10, 0), "...", 4},
                      DayCase{{"08:00", "X", "08:00", "", ""}, At(10, 0), "...", 3},
                      DayCase{{"08:00", "P", "", "14:00", ""}, At(10, 0), "(Error. Revisa los fichajes.)", 0}));

TEST(Departure, StatusLines) {
    EXPECT_EQ(ComputeDeparture(kFrom0745, At(9, 0)).status, "Hora de salida: 15:45");
    EXPECT_EQ(ComputeDeparture({"08:00", "P", "08:00", "", ""}, At(10, 0)).status, "Hora de salida no establecida.");
    const Departure wrong = ComputeDeparture({"08:00", "P", "", "14:00", ""}, At(10, 0));
    EXPECT_FALSE(wrong.consistent);
    EXPECT_EQ(wrong.status, "Error en configuración. Revise los fichajes.");
}

struct CheckCase {
    const char* e1;
    const char* s1;
    const char* e2;
    const char* problem;  // nullptr: consistent
};

class ClockInCheck : public ::testing::TestWithParam<CheckCase> {};

TEST_P(ClockInCheck, FindsTheFirstProblemInPairOrder) {
    const auto problem = ClockInsProblem(GetParam().e1, GetParam().s1, GetParam().e2);
    EXPECT_EQ(problem.value_or("none"), GetParam().problem ? GetParam().problem : "none");
}

INSTANTIATE_TEST_SUITE_P(Cases, ClockInCheck,
                         ::testing::Values(CheckCase{"", "", "", nullptr},
                                           CheckCase{"08:00", "14:00", "14:00", nullptr},
                                           CheckCase{"08:00", "08:00", "", nullptr},
                                           CheckCase{"", "14:00", "", kEmptyIntermediateClockIn},
                                           CheckCase{"08:00", "", "15:00", kEmptyIntermediateClockIn},
                                           CheckCase{"09:00", "08:00", "", kClockInsNotConsecutive},
                                           CheckCase{"08:00", "14:00", "13:59", kClockInsNotConsecutive},
                                           CheckCase{"", "14:00", "13:00", kEmptyIntermediateClockIn}));

}  // namespace
}  // namespace vt
