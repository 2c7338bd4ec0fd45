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

TEST(SortingRepetitions, ByMomentWithTiesInOrderAndUnreadableLast) {
    EntryList repetitions = ListOf({"18/03/2024 10:00 b", "17/03/2024 12:00 a", "9/03/2024 10:00 hand edited",
                                    "18/03/2024 10:00 a", "18/03/2024 09:59 d"});
    SortRepetitions(repetitions);
    EXPECT_EQ(Items(repetitions), (Lines{"17/03/2024 12:00 a", "18/03/2024 09:59 d", "18/03/2024 10:00 b",
                                         "18/03/2024 10:00 a", "9/03/2024 10:00 hand edited"}));
}

TEST(RepeatLater, OneDayAddsTheDelayAndDropsTheSeconds) {
    EXPECT_EQ(kRepeatChoices[8].label, "1 Día");
    EXPECT_EQ(RepeatLaterTarget(MakeDateTime(MakeDate(18, 3, 2024), 23, 59, 40), 8), "19/03/2024 23:59");
}

}  // namespace
}  // namespace vt
