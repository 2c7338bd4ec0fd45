#include "agenda/launching.h"

#include <gtest/gtest.h>

#include "agenda/entries.h"
#include "agenda/recurrence.h"
#include "entry_lists.h"
#include "scripted_dialogs.h"

namespace vt {
namespace {

using test::Items;
using test::ListOf;
using Lines = std::vector<std::string>;

// The program is started on Monday 18/03/2024.
class Launching : public ::testing::Test {
protected:
    const Date monday = MakeDate(18, 3, 2024);
    EntryList alarms;
    EntryList repetitions;
    test::ScriptedDialogs dialogs;
    Lines log;
    RunLog run_log = [this](const std::string& line) { log.push_back(line); };

    int Launch() { return LaunchDueAlarms(alarms, repetitions, monday, dialogs, run_log); }
    void Advance() { AdvanceAlarmDates(alarms, repetitions, monday, dialogs, run_log); }
};

TEST_F(Launching, NonRepeatingAlarmOfYesterdayBecomesOneReminderAndGoes) {
    alarms = ListOf({"17/03/2024 09:00 00 D 14 0 Revisión del coche <010324>"});
    EXPECT_EQ(Launch(), 1);
    EXPECT_EQ(log, Lines{"REP> 17/03/2024 09:00 00 D 14 0 Revisión del coche <010324>"});
    EXPECT_EQ(Items(repetitions), Lines{"17/03/2024 09:00 Revisión del coche"});
    EXPECT_TRUE(alarms.Empty());
    EXPECT_TRUE(dialogs.Shown().empty());
}

TEST_F(Launching, WeeklyAlarmStoredTenDaysAgoRemindsOnceAndMovesOn) {
    alarms = ListOf({"08/03/2024 11:30 07 D 00 0 Informe semanal"});
    Advance();
    EXPECT_EQ(log, Lines{"REP> 08/03/2024 11:30 07 D 00 0 Informe semanal"});
    EXPECT_EQ(Items(repetitions), Lines{"08/03/2024 11:30 Informe semanal"});
    EXPECT_EQ(Items(alarms), Lines{"22/03/2024 11:30 07 D 00 0 Informe semanal"});
}

TEST_F(Launching, DailyAlarmOfLastThursdayRemindsForThursdayAndForToday) {
    alarms = ListOf({"14/03/2024 08:15 01 D 00 0 Fichar"});
    Launch();
    EXPECT_EQ(Items(repetitions), (Lines{"14/03/2024 08:15 Fichar", "18/03/2024 08:15 Fichar"}));
    EXPECT_EQ(log.size(), 1u);
    EXPECT_EQ(Items(alarms), Lines{"14/03/2024 08:15 01 D 00 0 Fichar"});  // not moved by launching
    AdvanceStoredAlarmDates(alarms, monday, dialogs);
    EXPECT_EQ(Items(alarms), Lines{"19/03/2024 08:15 01 D 00 0 Fichar"});
}

TEST_F(Launching, AlarmOfTodayIsLeftForTheAdvance) {
    alarms = ListOf({"18/03/2024 10:00 01 M 07 0 Factura"});
    Launch();
    EXPECT_EQ(Items(repetitions), Lines{"18/03/2024 10:00 Factura"});
    EXPECT_EQ(Items(alarms), Lines{"18/03/2024 10:00 01 M 07 0 Factura"});
    Advance();
    EXPECT_EQ(Items(alarms), Lines{"18/04/2024 10:00 01 M 07 0 Factura"});
    EXPECT_EQ(repetitions.Count(), 2);  // a second refresh on the same day reminds again
}

TEST_F(Launching, FutureAlarmsAreNotTouched) {
    alarms = ListOf({"19/03/2024 10:00 00 D 14 0 Mañana"});
    EXPECT_EQ(Launch(), 0);
    EXPECT_TRUE(repetitions.Empty());
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(Items(alarms), Lines{"19/03/2024 10:00 00 D 14 0 Mañana"});
}

TEST_F(Launching, RemovalDoesNotSkipTheAlarmThatMovesUp) {
    alarms = ListOf({
        "10/03/2024 09:00 00 D 14 0 uno",
        "11/03/2024 09:00 00 D 14 0 dos",
        "25/03/2024 09:00 00 D 14 0 futuro",
        "12/03/2024 09:00 00 D 14 0 tres",
        "13/03/2024 09:00 01 A 14 0 anual",
    });
    EXPECT_EQ(Launch(), 4);
    EXPECT_EQ(log, (Lines{"REP> 10/03/2024 09:00 00 D 14 0 uno", "REP> 11/03/2024 09:00 00 D 14 0 dos",
                          "REP> 12/03/2024 09:00 00 D 14 0 tres", "REP> 13/03/2024 09:00 01 A 14 0 anual"}));
    EXPECT_EQ(Items(repetitions), (Lines{"10/03/2024 09:00 uno", "11/03/2024 09:00 dos", "12/03/2024 09:00 tres",
                                         "13/03/2024 09:00 anual"}));
    EXPECT_EQ(Items(alarms), (Lines{"25/03/2024 09:00 00 D 14 0 futuro", "13/03/2024 09:00 01 A 14 0 anual"}));
}

TEST_F(Launching, UnreadableAlarmsArePassedOverAndKept) {
    alarms = ListOf({"1O/03/2024 09:00 00 D 14 0 letter O", "10/03/2024 09:00 0 D 14 0 short count"});
    Advance();
    EXPECT_TRUE(repetitions.Empty());
    EXPECT_TRUE(log.empty());
    // Kept as they stand; the one whose date reads is placed by it, the other goes last.
    EXPECT_EQ(Items(alarms), (Lines{"10/03/2024 09:00 0 D 14 0 short count", "1O/03/2024 09:00 00 D 14 0 letter O"}));
}

TEST_F(Launching, UnknownUnitStillRemindsOnceAndIsKept) {
    alarms = ListOf({"10/03/2024 09:00 01 Q 14 0 raro"});
    Advance();
    EXPECT_EQ(Items(repetitions), Lines{"10/03/2024 09:00 raro"});
    EXPECT_EQ(Items(alarms), Lines{"10/03/2024 09:00 01 Q 14 0 raro"});
    // Once while looking for today's reminder, once while advancing the stored date.
    EXPECT_EQ(dialogs.Texts(), (Lines{"MAL!", "MAL!"}));
}

TEST(SortingRepetitions, ByMomentWithTiesInOrderAndUnreadableLast) {
    EntryList repetitions = ListOf({
        "18/03/2024 10:00 b",
        "17/03/2024 12:00 a",
        "9/03/2024 10:00 hand edited",
        "18/03/2024 10:00 c",
        "18/03/2024 09:59 d",
        "01/01/2025 00:00 e",
    });
    SortRepetitions(repetitions);
    EXPECT_EQ(Items(repetitions), (Lines{"17/03/2024 12:00 a", "18/03/2024 09:59 d", "18/03/2024 10:00 b",
                                         "18/03/2024 10:00 c", "01/01/2025 00:00 e", "9/03/2024 10:00 hand edited"}));
}

class DueRepetitions : public ::testing::Test {
protected:
    static DateTime At(int hour, int minute, int second) {
        return MakeDateTime(MakeDate(18, 3, 2024), hour, minute, second);
    }
    EntryList repetitions = ListOf({
        "18/03/2024 10:01 later",
        "garbled",
        "18/03/2024 10:00 now",
        "17/03/2024 23:59 yesterday",
    });
};

TEST_F(DueRepetitions, AreDueFromTheirMinuteOnSecondsIgnored) {
    EXPECT_EQ(FindDueRepetition(repetitions, At(10, 0, 59)), 3);
    EXPECT_EQ(FindDueRepetition(repetitions, At(10, 1, 0)), 1);
    EXPECT_EQ(FindDueRepetition(repetitions, At(0, 0, 0)), 4);
}

TEST_F(DueRepetitions, NoneWhenEveryOneIsLater) {
    repetitions.Remove(4);
    EXPECT_EQ(FindDueRepetition(repetitions, At(9, 59, 59)), 0);
    EXPECT_EQ(FindDueRepetition(EntryList{}, At(9, 59, 59)), 0);
}

TEST_F(DueRepetitions, TheWalkCanGoOnAfterAnEntry) {
    EXPECT_EQ(FindDueRepetition(repetitions, At(10, 0, 0), 3), 3);
    EXPECT_EQ(FindDueRepetition(repetitions, At(10, 0, 0), 4), 4);
    EXPECT_EQ(FindDueRepetition(repetitions, At(10, 0, 0), 5), 0);
    EXPECT_EQ(FindDueRepetition(repetitions, At(10, 0, 0), 0), 3);
}

struct RepeatCase {
    DateTime now;
    int choice;
    const char* target;
};

class RepeatLater : public ::testing::TestWithParam<RepeatCase> {};

TEST_P(RepeatLater, AddsTheDelayAndDropsTheSeconds) {
    EXPECT_EQ(RepeatLaterTarget(GetParam().now, GetParam().choice), GetParam().target);
}

const DateTime kLateEvening = MakeDateTime(MakeDate(18, 3, 2024), 23, 59, 40);

INSTANTIATE_TEST_SUITE_P(
    Cases, RepeatLater,
    ::testing::Values(RepeatCase{kLateEvening, 0, "19/03/2024 00:04"}, RepeatCase{kLateEvening, 1, "19/03/2024 00:09"},
                      RepeatCase{kLateEvening, 2, "19/03/2024 00:14"}, RepeatCase{kLateEvening, 3, "19/03/2024 00:29"},
                      RepeatCase{kLateEvening, 4, "19/03/2024 00:59"}, RepeatCase{kLateEvening, 5, "19/03/2024 01:59"},
                      RepeatCase{kLateEvening, 6, "19/03/2024 03:59"}, RepeatCase{kLateEvening, 7, "19/03/2024 05:59"},
                      RepeatCase{kLateEvening, 8, "19/03/2024 23:59"}, RepeatCase{kLateEvening, 9, "25/03/2024 23:59"},
                      RepeatCase{kLateEvening, -1, "19/03/2024 00:04"},
                      RepeatCase{kLateEvening, 10, "19/03/2024 00:04"},
                      RepeatCase{MakeDateTime(MakeDate(28, 2, 2024), 12, 0, 0), 8, "29/02/2024 12:00"},
                      RepeatCase{MakeDateTime(MakeDate(31, 12, 2024), 22, 30, 0), 7, "01/01/2025 04:30"}));

TEST(RepeatChoices, ListFiveMinutesFirstAndTheDaysLast) {
    EXPECT_EQ(kRepeatChoices[0].label, "5 Minutos");
    EXPECT_EQ(kRepeatChoices[8].label, "1 Día");
    EXPECT_EQ(kRepeatChoices[9].label, "1 Semana");
}

TEST(RepeatedEntries, TakeTheTargetsMomentAndTheDueText) {
    EXPECT_EQ(RepeatedEntry("18/03/2024 10:15", "18/03/2024 10:00 Llamar; ya"), "18/03/2024 10:15 Llamar; ya");
    EXPECT_EQ(RepeatedEntry("19/03/2024 00:04", "18/03/2024 10:00 "), "19/03/2024 00:04 ");
    EXPECT_EQ(RepeatedEntry("19/03/2024 00:04", "18/03/2024 10:00"), "19/03/2024 00:04 ");
    EXPECT_EQ(RepeatedEntry(RepeatLaterTarget(kLateEvening, 8), "18/03/2024 23:59 Cumpleaños (1990)"),
              "19/03/2024 23:59 Cumpleaños (1990)");
}

}  // namespace
}  // namespace vt
