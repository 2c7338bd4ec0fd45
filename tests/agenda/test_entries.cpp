#include "agenda/entries.h"

#include <gtest/gtest.h>

#include <tuple>

#include "entry_lists.h"

namespace vt {
namespace {

using test::Items;
using test::ListOf;
using Lines = std::vector<std::string>;

TEST(EntryFields, SitAtTheirFixedPositions) {
    const std::string alarm = "15/03/2024 10:00 07 M 14 1 Cumpleaños de Ana (1990) <010424>";
    const std::string repetition = "05/03/2024 09:30 Llamar a José; urgente";
    for (const auto& [field, in_alarm, in_repetition] : std::vector<std::tuple<int, const char*, const char*>>{
             {1, "15/03/2024", "05/03/2024"},
             {3, "M", ""},
             {6, "Cumpleaños de Ana (1990) <010424>", "Llamar a José; urgente"},
             {11, "Cumpleaños de Ana (1990)", ""},
         }) {
        SCOPED_TRACE(field);
        EXPECT_EQ(GetAlarmField(alarm, field), in_alarm);
        EXPECT_EQ(GetAlarmField(ListOf({"x", alarm}), 2, field), in_alarm);
        EXPECT_EQ(GetRepetitionField(repetition, field), in_repetition);
    }
}

// Hand-edited and broken entries: every field of both layouts must read without crashing, and
// what does not read must be recognised as such. Positions count characters: an accented
// letter is one of them, not two.
TEST(GarbledEntries, ReadWhatIsThereAndNeverMore) {
    // entry, reads as an alarm, reads as a repetition, fields 1 and 2
    for (const auto& [entry, alarm, repetition, field1, field2] :
         std::vector<std::tuple<std::string, bool, bool, const char*, const char*>>{
             {"", false, false, "", ""},
             {"15/03/2024 10:0", false, false, "15/03/2024", "10:0"},
             {"15/03/2024 10:00 07 D 00", true, true, "15/03/2024", "10:00"},
             {"15/03/2024 10:00 7 D 00 0 x", false, true, "15/03/2024", "10:00"},
             {"15/03/2024 10:00 07 D 0x 0 x", false, true, "15/03/2024", "10:00"},
             {"31/02/2024 10:00 07 D 00 0 x", false, false, "31/02/2024", "10:00"},
             {"é5/03/2024 10:00 00 D 14 0 x", false, false, "é5/03/2024", "10:00"},
             {"\xff\xfe/03/2024 10:00 00 D 14 0 x", false, false, "\xff\xfe/03/2024", "10:00"},
             {"<<<<>>>>(((())))", false, false, "<<<<>>>>((", "())))"},
         }) {
        SCOPED_TRACE(entry);
        EXPECT_EQ(AlarmReadable(entry), alarm);
        EXPECT_EQ(RepetitionMoment(entry).has_value(), repetition);
        EXPECT_EQ(GetAlarmField(entry, 1), field1);
        EXPECT_EQ(GetAlarmField(entry, 2), field2);
        for (int field = -1; field <= 12; ++field) {
            EXPECT_LE(GetAlarmField(entry, field).size(), entry.size()) << field;
            EXPECT_LE(GetRepetitionField(entry, field).size(), entry.size()) << field;
        }
    }
}

// The readers take only the form the program writes: two-digit fields, real dates and times.
TEST(EntryReaders, TakeOnlyTheFormTheProgramWrites) {
    EXPECT_EQ(RepetitionMoment("29/02/2024 23:59 x"), MakeDateTime(MakeDate(29, 2, 2024), 23, 59));
    for (const char* entry : {"5/3/2024 9:30:15 x", "05/03/2024 9:30 x", "05/03/2024 10:60 x", "05/03/2024 24:00 x",
                              "05/03/2024-10:00 x"}) {
        EXPECT_FALSE(RepetitionMoment(entry)) << entry;
    }
    const std::string alarm = "29/02/2024 07:05 99 A 14 0 x";
    EXPECT_EQ(AlarmDate(alarm), MakeDate(29, 2, 2024));
    EXPECT_EQ(AlarmTime(alarm), 7 * 60 + 5);
    EXPECT_EQ(AlarmCount(alarm), 99);
    EXPECT_EQ(AlarmNoticeDays(alarm), 14);
    EXPECT_FALSE(AlarmCount("29/02/2024 07:05 -1 A 14 0 x"));
    EXPECT_FALSE(AlarmNoticeDays("29/02/2024 07:05 01 A  7 0 x"));
    for (const int index : {0, 2, -3}) {  // outside the list there is nothing to read
        EXPECT_EQ(GetAlarmField(ListOf({alarm}), index, 1), "") << index;
    }
}

TEST(Builders, PadTheNumbersAndTurnCommasIntoSemicolons) {
    EXPECT_EQ(BuildAlarmEntry("15/03/2024", "10:00", 1, "M", 7, "0", "a, b,c"), "15/03/2024 10:00 01 M 07 0 a; b;c");
    EXPECT_EQ(BuildAlarmEntry("15/03/2024", "10:00", -5, "D", 100, "1", "x"), "15/03/2024 10:00 -05 D 100 1 x");
    EXPECT_EQ(BuildRepetitionEntry("5/3/2024", "9:30", "a, b"), "05/03/2024 09:30 a; b");
    // What does not read is written as given: a reminder is not dropped over its form.
    EXPECT_EQ(BuildRepetitionEntry("xx", "yy", "t"), "xx yy t");
}

// The same day keeps list order whatever the time; entries whose date does not read go last.
TEST(SortingAlarms, IsStableByDateWithUnreadableLast) {
    EntryList alarms = ListOf({"20/03/2024 18:00 00 D 14 0 b", "garbled", "20/03/2024 08:00 00 D 14 0 c",
                               "19/03/2025 08:00 00 D 14 0 d", "15/03/2024 23:00 00 D 14 0 a"});
    SortAlarms(alarms);
    EXPECT_EQ(Items(alarms), (Lines{"15/03/2024 23:00 00 D 14 0 a", "20/03/2024 18:00 00 D 14 0 b",
                                    "20/03/2024 08:00 00 D 14 0 c", "19/03/2025 08:00 00 D 14 0 d", "garbled"}));
}

}  // namespace
}  // namespace vt
