#include "workday/departure.h"

#include <gtest/gtest.h>

#include "workday/clock_ins.h"

namespace vt {
namespace {

int At(int hour, int minute) {
    return hour * 60 + minute;
}

struct StageCase {
    int now;
    int stage;
};

class ContinuousDayStages : public ::testing::TestWithParam<StageCase> {};

// Continuous day of 08:00 from 07:45: departure 15:45.
TEST_P(ContinuousDayStages, FollowTheMinutesLeft) {
    const Departure d = ComputeDeparture({"08:00", "C", "07:45", "", ""}, GetParam().now);
    EXPECT_EQ(d.stage, GetParam().stage) << GetParam().now;
    EXPECT_EQ(d.label, "15:45");
    EXPECT_EQ(d.status, "Hora de salida: 15:45");
}

INSTANTIATE_TEST_SUITE_P(Boundaries, ContinuousDayStages,
                         ::testing::Values(StageCase{At(8, 0), 5}, StageCase{At(15, 34), 5}, StageCase{At(15, 35), 6},
                                           StageCase{At(15, 36), 7}, StageCase{At(15, 39), 7}, StageCase{At(15, 40), 8},
                                           StageCase{At(15, 41), 9}, StageCase{At(15, 43), 9},
                                           StageCase{At(15, 44), 10}, StageCase{At(15, 45), 11},
                                           StageCase{At(23, 59), 11}));

TEST(Departure, SplitDayAddsTheBreak) {
    const Departure d = ComputeDeparture({"08:00", "P", "08:00", "14:00", "15:30"}, At(9, 0));
    EXPECT_EQ(d.label, "17:30");
    EXPECT_EQ(d.stage, 5);
}

struct MissingCase {
    const char* mode;
    const char* e1;
    const char* s1;
    const char* e2;
    int stage;
};

class NotYetEstablished : public ::testing::TestWithParam<MissingCase> {};

TEST_P(NotYetEstablished, TheFirstEmptyClockInDecidesTheStage) {
    const auto& c = GetParam();
    const Departure d = ComputeDeparture({"08:00", c.mode, c.e1, c.s1, c.e2}, At(10, 0));
    EXPECT_EQ(d.stage, c.stage);
    EXPECT_EQ(d.label, "...");
    EXPECT_EQ(d.status, "Hora de salida no establecida.");
}

INSTANTIATE_TEST_SUITE_P(Cases, NotYetEstablished,
                         ::testing::Values(MissingCase{"C", "", "", "", 1}, MissingCase{"P", "", "", "", 2},
                                           MissingCase{"P", "08:00", "", "", 3},
                                           MissingCase{"P", "08:00", "14:00", "", 4},
                                           MissingCase{"X", "08:00", "", "", 3}));

TEST(Departure, ContinuousDayIgnoresTheAfternoonBoxes) {
    const Departure plain = ComputeDeparture({"07:30", "C", "08:00", "", ""}, At(9, 0));
    const Departure filled = ComputeDeparture({"07:30", "C", "08:00", "13:00", "16:00"}, At(9, 0));
    EXPECT_EQ(plain.label, "15:30");
    EXPECT_EQ(filled.label, "15:30");
}

TEST(Departure, PastMidnightWrapsTheLabelButNotTheStage) {
    const Departure d = ComputeDeparture({"08:00", "C", "20:00", "", ""}, At(21, 0));
    EXPECT_EQ(d.label, "04:00");
    EXPECT_EQ(d.stage, 5) << "1680 - 1260 minutes are left, not a departure already passed";
}

TEST(Departure, InconsistentClockInsGiveTheErrorTexts) {
    const Departure d = ComputeDeparture({"08:00", "P", "", "14:00", ""}, At(10, 0));
    EXPECT_FALSE(d.consistent);
    EXPECT_EQ(d.stage, 0);
    EXPECT_EQ(d.label, "(Error. Revisa los fichajes.)");
    EXPECT_EQ(d.status, "Error en configuración. Revise los fichajes.");
}

struct CheckCase {
    const char* e1;
    const char* s1;
    const char* e2;
    const char* problem;  // nullptr: consistent
};

class ClockInCheck : public ::testing::TestWithParam<CheckCase> {};

TEST_P(ClockInCheck, FindsTheFirstProblemInPairOrder) {
    const auto& c = GetParam();
    const auto problem = ClockInsProblem(c.e1, c.s1, c.e2);
    if (c.problem == nullptr) {
        EXPECT_FALSE(problem.has_value());
    } else {
        EXPECT_EQ(problem, std::string(c.problem));
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, ClockInCheck,
                         ::testing::Values(CheckCase{"", "", "", nullptr}, CheckCase{"08:00", "", "", nullptr},
                                           CheckCase{"08:00", "14:00", "14:00", nullptr},
                                           CheckCase{"08:00", "08:00", "", nullptr},
                                           CheckCase{"", "14:00", "", kEmptyIntermediateClockIn},
                                           CheckCase{"08:00", "", "15:00", kEmptyIntermediateClockIn},
                                           CheckCase{"09:00", "08:00", "", kClockInsNotConsecutive},
                                           CheckCase{"08:00", "14:00", "13:59", kClockInsNotConsecutive},
                                           // the first pair is looked at first
                                           CheckCase{"09:00", "08:00", "", kClockInsNotConsecutive},
                                           CheckCase{"", "14:00", "13:00", kEmptyIntermediateClockIn}));

}  // namespace
}  // namespace vt
