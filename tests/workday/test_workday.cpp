#include "workday/workday.h"

#include <gtest/gtest.h>

#include "scripted_dialogs.h"
#include "test_names.h"
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
    // The work date, the three clock-ins, and today's hours and mode.
    std::string Today() const {
        const Settings& s = state.settings;
        return s.WorkDate + " " + s.Entrada1 + "-" + s.Salida1 + "-" + s.Entrada2 + " " + state.TodayHours + "|" +
               state.TodayMode;
    }
    AppState state;
    test::ScriptedDialogs dialogs;
    // Wednesday 6 March 2024, 08:12.
    const DateTime now = MakeDateTime(MakeDate(6, 3, 2024), 8, 12, 40);
};

class StoredWorkDate : public WorkdayTest,
                       public ::testing::WithParamInterface<std::pair<std::string_view, std::string_view>> {};

// Any other stored date, readable or not, starts today with the arrival and an empty afternoon;
// a restart on the same day keeps the clock-ins.
TEST_P(StoredWorkDate, DecidesWhetherTheDayStartsAfresh) {
    state.settings.WorkDate = GetParam().first;
    SettleWorkDate(state, now);
    EXPECT_EQ(Today(), GetParam().second);
}

constexpr const char* kFresh = "06-03-24 08:12-- 07:30|P";
INSTANTIATE_TEST_SUITE_P(Dates, StoredWorkDate,
                         ::testing::Values(std::pair{"05-03-24", kFresh}, std::pair{"", kFresh},
                                           std::pair{"garbage", kFresh}, std::pair{"31-02-24", kFresh},
                                           std::pair{"06-03-24", "06-03-24 07:00-13:00-14:00 07:30|P"}));

TEST_F(WorkdayTest, TheClockInErrorIsShownOnceUntilItsFlagIsCleared) {
    state.TodayHours = "08:00";
    state.TodayMode = "P";
    state.settings.Entrada1 = "";  // leaving with no arrival before it
    UpdateDeparture(state, 600, dialogs);
    UpdateDeparture(state, 601, dialogs);
    ASSERT_EQ(dialogs.Texts(), std::vector<std::string>{"Hay errores en los fichajes. Revisa que:\r\n\r\n - Todos los "
                                                        "fichajes sean consecutivos.\r\n - No haya fichajes "
                                                        "intermedios vacíos."});
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
    EXPECT_EQ(Today(), "06-03-24 07:00-13:00- 07:30|P");
    EXPECT_TRUE(dialogs.Shown().empty());
    state.settings.DayMode[3] = "C";
    ApplyScheduleToToday(state, dialogs);
    EXPECT_EQ(Today(), "06-03-24 07:00-- 07:30|C");
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
// Named by the day and the moment: "P_08_00_in_08_00_out_14_00_at_10_00_stage_4".
void PrintTo(const DayCase& c, std::ostream* os) {
    const WorkdayInput& d = c.clock_ins;
    std::string text = std::string(d.today_mode) + " " + std::string(d.today_hours);
    const std::pair<const char*, std::string_view> clock_ins[] = {
        {"in", d.entrada1}, {"out", d.salida1}, {"back", d.entrada2}};
    for (const auto& [word, time] : clock_ins) {
        text += time.empty() ? "" : " " + std::string(word) + " " + std::string(time);
    }
    const auto two = [](int n) { return std::string(n < 10 ? "0" : "") + std::to_string(n); };
    *os << test::TestName(text + " at " + two(c.now / 60) + ":" + two(c.now % 60) + " stage " +
                          std::to_string(c.stage));
}

class DepartureOfTheDay : public ::testing::TestWithParam<DayCase> {};

// The status line follows the label: the departure time, "not set" while it is unknown, or the
// error of inconsistent clock-ins (the one stage 0).
TEST_P(DepartureOfTheDay, DependsOnTheModeTheClockInsSoFarAndTheMinutesLeft) {
    const DayCase& c = GetParam();
    const Departure d = ComputeDeparture(c.clock_ins, c.now);
    EXPECT_EQ(d.label, c.label);
    EXPECT_EQ(d.stage, c.stage);
    EXPECT_EQ(d.consistent, c.stage != 0);
    EXPECT_EQ(d.status, c.stage == 0                    ? "Error en configuración. Revise los fichajes."
                        : std::string(c.label) == "..." ? "Hora de salida no establecida."
                                                        : "Hora de salida: " + std::string(c.label));
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

// The first problem in pair order; an equal time is fine.
TEST(ClockInCheck, FindsTheFirstProblemInPairOrder) {
    const auto problem = [](const char* e1, const char* s1, const char* e2) {
        return ClockInsProblem(e1, s1, e2).value_or("none");
    };
    const std::string empty = "No puede haber fichajes intermedios vacíos.";
    const std::string order = "Las horas deben ser consecutivas.";
    EXPECT_EQ(problem("", "", ""), "none");
    EXPECT_EQ(problem("08:00", "14:00", "14:00"), "none");
    EXPECT_EQ(problem("08:00", "08:00", ""), "none");
    EXPECT_EQ(problem("", "14:00", ""), empty);
    EXPECT_EQ(problem("08:00", "", "15:00"), empty);
    EXPECT_EQ(problem("09:00", "08:00", ""), order);
    EXPECT_EQ(problem("08:00", "14:00", "13:59"), order);
    EXPECT_EQ(problem("", "14:00", "13:00"), empty);
}

}  // namespace
}  // namespace vt
