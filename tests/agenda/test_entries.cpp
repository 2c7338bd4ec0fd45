#include "agenda/entries.h"

#include <gtest/gtest.h>

#include <random>

#include "entry_lists.h"
#include "store/app_state.h"

namespace vt {
namespace {

using test::Items;
using test::ListOf;

constexpr const char* kAlarm = "15/03/2024 10:00 07 M 14 1 Cumpleaños de Ana (1990) <010424>";
constexpr const char* kRepetition = "05/03/2024 09:30 Llamar a José; urgente";

struct FieldCase {
    int field;
    const char* expected;
};

class AlarmFields : public ::testing::TestWithParam<FieldCase> {};

TEST_P(AlarmFields, SitAtTheirFixedPositions) {
    EXPECT_EQ(GetAlarmField(kAlarm, GetParam().field), GetParam().expected);
    EXPECT_EQ(GetAlarmField(ListOf({"x", kAlarm}), 2, GetParam().field), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Layout, AlarmFields,
                         ::testing::Values(FieldCase{1, "15/03/2024"}, FieldCase{2, "10:00"}, FieldCase{3, "M"},
                                           FieldCase{4, "07"}, FieldCase{5, "14"},
                                           FieldCase{6, "Cumpleaños de Ana (1990) <010424>"},
                                           FieldCase{7, "15/03/2024 10:00"}, FieldCase{8, ""}, FieldCase{9, "1"},
                                           FieldCase{10, "01/04/24"}, FieldCase{11, "Cumpleaños de Ana (1990)"},
                                           FieldCase{0, ""}, FieldCase{12, ""}, FieldCase{-1, ""}));

class RepetitionFields : public ::testing::TestWithParam<FieldCase> {};

TEST_P(RepetitionFields, SitAtTheirFixedPositions) {
    EXPECT_EQ(GetRepetitionField(kRepetition, GetParam().field), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Layout, RepetitionFields,
                         ::testing::Values(FieldCase{1, "05/03/2024"}, FieldCase{2, "09:30"},
                                           FieldCase{6, "Llamar a José; urgente"}, FieldCase{7, "05/03/2024 09:30"},
                                           FieldCase{8, "09:30 Llamar a José; urgente"}, FieldCase{3, ""},
                                           FieldCase{4, ""}, FieldCase{5, ""}, FieldCase{9, ""}, FieldCase{0, ""}));

TEST(AlarmFieldsByIndex, OutsideTheListGiveNothing) {
    const EntryList alarms = ListOf({kAlarm});
    EXPECT_EQ(GetAlarmField(alarms, 0, 1), "");
    EXPECT_EQ(GetAlarmField(alarms, 2, 1), "");
    EXPECT_EQ(GetAlarmField(alarms, -3, 6), "");
}

// Hand-edited and broken entries: every field of both layouts must read without crashing, and
// what does not read must be recognised as such.
struct GarbledCase {
    const char* entry;
    bool alarm_readable;
    bool repetition_readable;
    const char* field1;
    const char* field2;
};

class GarbledEntries : public ::testing::TestWithParam<GarbledCase> {};

TEST_P(GarbledEntries, ReadWhatIsThereAndNeverMore) {
    const std::string entry = GetParam().entry;
    EXPECT_EQ(AlarmReadable(entry), GetParam().alarm_readable);
    EXPECT_EQ(RepetitionMoment(entry).has_value(), GetParam().repetition_readable);
    EXPECT_EQ(GetAlarmField(entry, 1), GetParam().field1);
    EXPECT_EQ(GetAlarmField(entry, 2), GetParam().field2);
    for (int field = -1; field <= 12; ++field) {
        EXPECT_LE(GetAlarmField(entry, field).size(), entry.size()) << field;
        EXPECT_LE(GetRepetitionField(entry, field).size(), entry.size()) << field;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Cases, GarbledEntries,
    ::testing::Values(GarbledCase{"", false, false, "", ""}, GarbledCase{"1", false, false, "1", ""},
                      GarbledCase{"15/03/2024", false, false, "15/03/2024", ""},
                      GarbledCase{"15/03/2024 10:0", false, false, "15/03/2024", "10:0"},
                      GarbledCase{"15/03/2024 10:00", false, true, "15/03/2024", "10:00"},
                      GarbledCase{"15/03/2024 10:00 07 D 00", true, true, "15/03/2024", "10:00"},
                      GarbledCase{"15/03/2024 10:00 7 D 00 0 x", false, true, "15/03/2024", "10:00"},
                      GarbledCase{"15/03/2024 10:00 07 D 0x 0 x", false, true, "15/03/2024", "10:00"},
                      GarbledCase{"31/02/2024 10:00 07 D 00 0 x", false, false, "31/02/2024", "10:00"},
                      GarbledCase{"15/03/2024 24:00 07 D 00 0 x", false, false, "15/03/2024", "24:00"},
                      GarbledCase{"15/03/0000 10:00 07 D 00 0 x", false, false, "15/03/0000", "10:00"},
                      GarbledCase{"15-03-2024 10:00 07 D 00 0 x", false, false, "15-03-2024", "10:00"},
                      // Positions count characters: an accented letter is one of them, not two.
                      GarbledCase{"é5/03/2024 10:00 00 D 14 0 x", false, false, "é5/03/2024", "10:00"},
                      GarbledCase{"\xff\xfe/03/2024 10:00 00 D 14 0 x", false, false, "\xff\xfe/03/2024", "10:00"},
                      GarbledCase{"<<<<>>>>(((())))", false, false, "<<<<>>>>((", "())))"}));

TEST(RepetitionMoments, ReadOnlyInTheFormTheProgramWrites) {
    EXPECT_EQ(RepetitionMoment("05/03/2024 09:30 x"), MakeDateTime(MakeDate(5, 3, 2024), 9, 30));
    EXPECT_EQ(RepetitionMoment("29/02/2024 23:59"), MakeDateTime(MakeDate(29, 2, 2024), 23, 59));
    EXPECT_EQ(RepetitionMoment("01/01/0001 00:00"), MakeDateTime(MakeDate(1, 1, 1), 0, 0));
    EXPECT_FALSE(RepetitionMoment("5/3/2024 9:30:15 x"));
    EXPECT_FALSE(RepetitionMoment("05/03/2024 9:30 x"));
    EXPECT_FALSE(RepetitionMoment("29/02/2023 10:00 x"));
    EXPECT_FALSE(RepetitionMoment("05/13/2024 10:00 x"));
    EXPECT_FALSE(RepetitionMoment("05/03/2024 10:60 x"));
    EXPECT_FALSE(RepetitionMoment("05/03/2024-10:00 x"));
}

TEST(AlarmReaders, TakeTheNumbersOfTheirFields) {
    const std::string entry = "29/02/2024 07:05 99 A 14 0 x";
    EXPECT_EQ(AlarmDate(entry), MakeDate(29, 2, 2024));
    EXPECT_EQ(AlarmTime(entry), 7 * 60 + 5);
    EXPECT_EQ(AlarmCount(entry), 99);
    EXPECT_EQ(AlarmNoticeDays(entry), 14);
    EXPECT_FALSE(AlarmCount("29/02/2024 07:05 -1 A 14 0 x"));
    EXPECT_FALSE(AlarmNoticeDays("29/02/2024 07:05 01 A  7 0 x"));
}

TEST(Builders, JoinTheFieldsWithSingleBlanks) {
    EXPECT_EQ(BuildAlarmEntry("15/03/2024", "10:00", 7, "D", 0, "0", "Reunión"), "15/03/2024 10:00 07 D 00 0 Reunión");
    EXPECT_EQ(BuildAlarmEntry("15/03/2024", "10:00", 0, "D", 14, "1", ""), "15/03/2024 10:00 00 D 14 1 ");
    EXPECT_EQ(BuildAlarmEntry("15/03/2024", "10:00", -5, "D", 100, "1", "x"), "15/03/2024 10:00 -05 D 100 1 x");
    EXPECT_EQ(BuildRepetitionEntry("5/3/2024", "9:30", "Llamar"), "05/03/2024 09:30 Llamar");
    // What does not read is written as given: a reminder is not dropped over its form.
    EXPECT_EQ(BuildRepetitionEntry("xx", "yy", "t"), "xx yy t");
}

TEST(Builders, TurnCommasIntoSemicolonsOneWayOnly) {
    const std::string alarm = BuildAlarmEntry("15/03/2024", "10:00", 1, "M", 7, "0", "a, b,c");
    EXPECT_EQ(alarm, "15/03/2024 10:00 01 M 07 0 a; b;c");
    EXPECT_EQ(GetAlarmField(alarm, 6), "a; b;c");
    const std::string repetition = BuildRepetitionEntry("15/03/2024", "10:00", "a, b");
    EXPECT_EQ(GetRepetitionField(repetition, 6), "a; b");
    EXPECT_EQ(GetRepetitionField(BuildRepetitionEntry("15/03/2024", "10:00", "a; b"), 6), "a; b");
}

TEST(EntryListOperations, RemovingMovesLaterEntriesDown) {
    EntryList list;
    AppendAlarm(list, "a");
    AppendAlarm(list, "b");
    AppendRepetition(list, "c");
    RemoveAlarm(list, 2);
    EXPECT_EQ(Items(list), (std::vector<std::string>{"a", "c"}));
    RemoveRepetition(list, 0);
    RemoveRepetition(list, 3);
    RemoveAlarm(list, -1);
    EXPECT_EQ(Items(list), (std::vector<std::string>{"a", "c"}));
    RemoveRepetition(list, 1);
    EXPECT_EQ(Items(list), (std::vector<std::string>{"c"}));
}

TEST(SortingAlarms, ComparesDatesNotTextAndKeepsTiesInOrder) {
    EntryList alarms = ListOf({
        "10/03/2024 18:00 00 D 14 0 first of the 10th",
        "01/02/2025 09:00 00 D 14 0 next year",
        "garbled one",
        "10/03/2024 08:00 00 D 14 0 second of the 10th, earlier time",
        "15/01/2024 09:00 00 D 14 0 January",
        "32/01/2024 09:00 00 D 14 0 no such day",
    });
    SortAlarms(alarms);
    EXPECT_EQ(Items(alarms), (std::vector<std::string>{
                                 "15/01/2024 09:00 00 D 14 0 January",
                                 "10/03/2024 18:00 00 D 14 0 first of the 10th",
                                 "10/03/2024 08:00 00 D 14 0 second of the 10th, earlier time",
                                 "01/02/2025 09:00 00 D 14 0 next year",
                                 "garbled one",
                                 "32/01/2024 09:00 00 D 14 0 no such day",
                             }));
}

// The list used to be kept by a bubble sort (passes from the last pair down, swapping only when
// the later entry is strictly earlier). The faster sort must give the same order.
std::vector<std::string> BubbleSortedByDate(std::vector<std::string> entries) {
    for (std::size_t pass = 1; pass < entries.size(); ++pass) {
        for (std::size_t j = entries.size() - 1; j >= pass; --j) {
            if (*AlarmDate(entries[j]) < *AlarmDate(entries[j - 1])) {
                std::swap(entries[j], entries[j - 1]);
            }
        }
    }
    return entries;
}

TEST(SortingAlarms, GivesTheOrderTheBubbleSortGave) {
    std::mt19937 random(20240315);
    for (int round = 0; round < 50; ++round) {
        EntryList alarms;
        const int size = static_cast<int>(random() % 40);
        for (int i = 0; i < size; ++i) {
            // Few distinct dates, so that ties are common.
            const Date date = AddDays(MakeDate(1, 3, 2024), static_cast<int>(random() % 6));
            alarms.Append(BuildAlarmEntry(FormatDate(date), "10:00", 0, "D", 14, "0", "n" + std::to_string(i)));
        }
        const auto expected = BubbleSortedByDate(Items(alarms));
        SortAlarms(alarms);
        EXPECT_EQ(Items(alarms), expected) << "round " << round;
    }
}

TEST(UnreadableEntries, AreNamedByTheKeysTheyWillBeSavedUnder) {
    Settings settings;
    settings.Repetitions = ListOf({"05/03/2024 09:30 ok", "05/03/2024 9h30 bad", "06/03/2024 10:00 ok"});
    settings.Alarms = ListOf({
        "xx/03/2024 10:00 00 D 14 0 bad date",
        "15/03/2024 10:00 00 D 14 0 ok",
        "15/03/2024 10:00 01 M 07 0 ok",
        "15/03/2024 10:00 x7 D 14 0 bad count",
    });
    EXPECT_EQ(UnreadableEntryKeys(settings), (std::vector<std::string>{"REP_002", "ALA_001", "ALA_004"}));
    settings.Repetitions.Remove(2);
    settings.Alarms.Remove(4);
    settings.Alarms.Remove(1);
    EXPECT_TRUE(UnreadableEntryKeys(settings).empty());
}

}  // namespace
}  // namespace vt
