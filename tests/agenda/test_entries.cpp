#include "agenda/entries.h"

#include <gtest/gtest.h>

#include <random>

#include "entry_lists.h"

namespace vt {
namespace {

using test::Items;
using test::ListOf;
using Lines = std::vector<std::string>;

constexpr const char* kAlarm = "15/03/2024 10:00 07 M 14 1 Cumpleaños de Ana (1990) <010424>";
constexpr const char* kRepetition = "05/03/2024 09:30 Llamar a José; urgente";

struct FieldCase {
    int field;
    const char* alarm;
    const char* repetition;
};

class EntryFields : public ::testing::TestWithParam<FieldCase> {};

TEST_P(EntryFields, SitAtTheirFixedPositions) {
    EXPECT_EQ(GetAlarmField(kAlarm, GetParam().field), GetParam().alarm);
    EXPECT_EQ(GetAlarmField(ListOf({"x", kAlarm}), 2, GetParam().field), GetParam().alarm);
    EXPECT_EQ(GetRepetitionField(kRepetition, GetParam().field), GetParam().repetition);
}

INSTANTIATE_TEST_SUITE_P(Layout, EntryFields,
                         ::testing::Values(FieldCase{1, "15/03/2024", "05/03/2024"}, FieldCase{2, "10:00", "09:30"},
                                           FieldCase{3, "M", ""}, FieldCase{4, "07", ""}, FieldCase{5, "14", ""},
                                           FieldCase{6, "Cumpleaños de Ana (1990) <010424>", "Llamar a José; urgente"},
                                           FieldCase{7, "15/03/2024 10:00", "05/03/2024 09:30"},
                                           FieldCase{8, "", "09:30 Llamar a José; urgente"}, FieldCase{9, "1", ""},
                                           FieldCase{10, "01/04/24", ""}, FieldCase{11, "Cumpleaños de Ana (1990)", ""},
                                           FieldCase{12, "", ""}));

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

// Positions count characters: an accented letter is one of them, not two.
INSTANTIATE_TEST_SUITE_P(
    Cases, GarbledEntries,
    ::testing::Values(GarbledCase{"", false, false, "", ""},
                      GarbledCase{"15/03/2024 10:0", false, false, "15/03/2024", "10:0"},
                      GarbledCase{"15/03/2024 10:00", false, true, "15/03/2024", "10:00"},
                      GarbledCase{"15/03/2024 10:00 07 D 00", true, true, "15/03/2024", "10:00"},
                      GarbledCase{"15/03/2024 10:00 7 D 00 0 x", false, true, "15/03/2024", "10:00"},
                      GarbledCase{"15/03/2024 10:00 07 D 0x 0 x", false, true, "15/03/2024", "10:00"},
                      GarbledCase{"31/02/2024 10:00 07 D 00 0 x", false, false, "31/02/2024", "10:00"},

                      GarbledCase{"é5/03/2024 10:00 00 D 14 0 x", false, false, "é5/03/2024", "10:00"},
                      GarbledCase{"\xff\xfe/03/2024 10:00 00 D 14 0 x", false, false, "\xff\xfe/03/2024", "10:00"},
                      GarbledCase{"<<<<>>>>(((())))", false, false, "<<<<>>>>((", "())))"}));

TEST(EntryReaders, TakeOnlyTheFormTheProgramWrites) {
    EXPECT_EQ(RepetitionMoment("29/02/2024 23:59 x"), MakeDateTime(MakeDate(29, 2, 2024), 23, 59));
    for (const char* entry : {"5/3/2024 9:30:15 x", "05/03/2024 9:30 x", "05/03/2024 10:60 x", "05/03/2024-10:00 x"}) {
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

TEST(Builders, JoinTheFieldsAndTurnCommasIntoSemicolons) {
    EXPECT_EQ(BuildAlarmEntry("15/03/2024", "10:00", 7, "D", 0, "0", "Reunión"), "15/03/2024 10:00 07 D 00 0 Reunión");
    EXPECT_EQ(BuildAlarmEntry("15/03/2024", "10:00", -5, "D", 100, "1", "x"), "15/03/2024 10:00 -05 D 100 1 x");
    EXPECT_EQ(BuildAlarmEntry("15/03/2024", "10:00", 1, "M", 7, "0", "a, b,c"), "15/03/2024 10:00 01 M 07 0 a; b;c");
    EXPECT_EQ(BuildRepetitionEntry("5/3/2024", "9:30", "a, b"), "05/03/2024 09:30 a; b");
    // What does not read is written as given: a reminder is not dropped over its form.
    EXPECT_EQ(BuildRepetitionEntry("xx", "yy", "t"), "xx yy t");
}

// The list used to be kept by a bubble sort (passes from the last pair down, swapping only when
// the later entry is strictly earlier): the same day keeps list order, whatever the time, and
// entries whose date does not read go last.
std::vector<std::string> BubbleSortedByDate(std::vector<std::string> entries) {
    const Date kLast = MakeDate(31, 12, 9999);
    for (std::size_t pass = 1; pass < entries.size(); ++pass) {
        for (std::size_t j = entries.size() - 1; j >= pass; --j) {
            if (AlarmDate(entries[j]).value_or(kLast) < AlarmDate(entries[j - 1]).value_or(kLast)) {
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
            // Few distinct dates, so that ties are common; years apart, so that a sort by text
            // would show, and times that a sort by moment would follow.
            const Date date = AddDays(MakeDate(1, 3, 2024), static_cast<int>(random() % 6) * 200);
            alarms.Append(i % 7 == 3 ? "garbled " + std::to_string(i)
                                     : BuildAlarmEntry(FormatDate(date), i % 2 ? "18:00" : "08:00", 0, "D", 14, "0",
                                                       "n" + std::to_string(i)));
        }
        const auto expected = BubbleSortedByDate(Items(alarms));
        SortAlarms(alarms);
        EXPECT_EQ(Items(alarms), expected) << "round " << round;
    }
}

}  // namespace
}  // namespace vt
