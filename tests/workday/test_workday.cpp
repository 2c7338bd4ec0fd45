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

constexpr const char* kFresh = "06-03-24 08:12-- 07:30|P";

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

}  // namespace
}  // namespace vt
