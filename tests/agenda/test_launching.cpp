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

    int Launch() { return LaunchDueAlarms(alarms, repetitions, monday, dialogs, run_log).launched; }
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

// Deliberate: launching leaves today's alarm in place for the advance, so a second refresh on the
// same day reminds of it again.
TEST_F(Launching, AlarmOfTodayIsLeftForTheAdvanceAndASecondRefreshRemindsAgain) {
    alarms = ListOf({"18/03/2024 10:00 01 M 07 0 Factura"});
    Launch();
    EXPECT_EQ(Items(repetitions), Lines{"18/03/2024 10:00 Factura"});
    EXPECT_EQ(Items(alarms), Lines{"18/03/2024 10:00 01 M 07 0 Factura"});
    Advance();
    EXPECT_EQ(Items(alarms), Lines{"18/04/2024 10:00 01 M 07 0 Factura"});
    EXPECT_EQ(repetitions.Count(), 2);
}

// After a one-time alarm is removed the next one moves up into its place and is read there too.
TEST_F(Launching, RemovalDoesNotSkipTheAlarmThatMovesUpAndFutureAlarmsStay) {
    alarms =
        ListOf({"10/03/2024 09:00 00 D 14 0 uno", "11/03/2024 09:00 00 D 14 0 dos", "19/03/2024 09:00 00 D 14 0 mañana",
                "12/03/2024 09:00 00 D 14 0 tres", "13/03/2024 09:00 01 A 14 0 anual"});
    EXPECT_EQ(Launch(), 4);
    EXPECT_EQ(log.size(), 4u);
    EXPECT_EQ(Items(repetitions), (Lines{"10/03/2024 09:00 uno", "11/03/2024 09:00 dos", "12/03/2024 09:00 tres",
                                         "13/03/2024 09:00 anual"}));
    EXPECT_EQ(Items(alarms), (Lines{"19/03/2024 09:00 00 D 14 0 mañana", "13/03/2024 09:00 01 A 14 0 anual"}));
}

TEST_F(Launching, UnreadableAlarmsArePassedOverAndAnUnknownUnitRemindsOnceAndIsKept) {
    alarms = ListOf({"1O/03/2024 09:00 00 D 14 0 letter O", "10/03/2024 09:00 0 D 14 0 short count",
                     "10/03/2024 09:00 01 Q 14 0 raro"});
    Advance();
    EXPECT_EQ(Items(repetitions), Lines{"10/03/2024 09:00 raro"});
    EXPECT_EQ(log, Lines{"REP> 10/03/2024 09:00 01 Q 14 0 raro"});
    // Kept as they stand; those whose date reads are placed by it, the other goes last.
    EXPECT_EQ(Items(alarms), (Lines{"10/03/2024 09:00 0 D 14 0 short count", "10/03/2024 09:00 01 Q 14 0 raro",
                                    "1O/03/2024 09:00 00 D 14 0 letter O"}));
    // Once while looking for today's reminder, once while advancing the stored date.
    EXPECT_EQ(dialogs.Texts(), (Lines{"MAL!", "MAL!"}));
}

TEST(DueRepetitions, AreDueFromTheirMinuteOnAndTheWalkGoesOnAfterAnEntry) {
    const EntryList repetitions =
        ListOf({"18/03/2024 10:01 later", "garbled", "18/03/2024 10:00 now", "17/03/2024 23:59 yesterday"});
    const auto at = [](int hour, int minute, int second) {
        return MakeDateTime(MakeDate(18, 3, 2024), hour, minute, second);
    };
    EXPECT_EQ(FindDueRepetition(repetitions, at(10, 0, 59)), 3);
    EXPECT_EQ(FindDueRepetition(repetitions, at(10, 1, 0)), 1);
    EXPECT_EQ(FindDueRepetition(repetitions, at(10, 0, 0), 4), 4);
    EXPECT_EQ(FindDueRepetition(repetitions, at(10, 0, 0), 5), 0);
    EXPECT_EQ(FindDueRepetition(ListOf({"18/03/2024 10:00 now"}), at(9, 59, 59)), 0);
}

TEST(SortingRepetitions, ByMomentWithTiesInOrderAndUnreadableLast) {
    EntryList repetitions = ListOf({"18/03/2024 10:00 b", "17/03/2024 12:00 a", "9/03/2024 10:00 hand edited",
                                    "18/03/2024 10:00 a", "18/03/2024 09:59 d"});
    SortRepetitions(repetitions);
    EXPECT_EQ(Items(repetitions), (Lines{"17/03/2024 12:00 a", "18/03/2024 09:59 d", "18/03/2024 10:00 b",
                                         "18/03/2024 10:00 a", "9/03/2024 10:00 hand edited"}));
}

// Every delay, late in the evening so that each one crosses midnight; the seconds are dropped.
TEST(RepeatLater, AddsTheDelayAndDropsTheSeconds) {
    const DateTime late_evening = MakeDateTime(MakeDate(18, 3, 2024), 23, 59, 40);
    const Lines targets{"19/03/2024 00:04", "19/03/2024 00:09", "19/03/2024 00:14", "19/03/2024 00:29",
                        "19/03/2024 00:59", "19/03/2024 01:59", "19/03/2024 03:59", "19/03/2024 05:59",
                        "19/03/2024 23:59", "25/03/2024 23:59"};
    for (int choice = 0; choice < 10; ++choice) {
        EXPECT_EQ(RepeatLaterTarget(late_evening, choice), targets[static_cast<size_t>(choice)]) << choice;
    }
    EXPECT_EQ(kRepeatChoices[8].label, "1 Día");
    // An answer outside the list is taken as the first.
    EXPECT_EQ(RepeatLaterTarget(late_evening, -1), targets[0]);
    EXPECT_EQ(RepeatLaterTarget(late_evening, 10), targets[0]);
    EXPECT_EQ(RepeatLaterTarget(MakeDateTime(MakeDate(28, 2, 2024), 12, 0, 0), 8), "29/02/2024 12:00");
}

}  // namespace
}  // namespace vt
