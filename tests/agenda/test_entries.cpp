#include "agenda/entries.h"

#include <gtest/gtest.h>

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
                         ::testing::Values(FieldCase{1, "15/03/2024", "05/03/2024"}, FieldCase{3, "M", ""},
                                           FieldCase{6, "Cumpleaños de Ana (1990) <010424>", "Llamar a José; urgente"},
                                           FieldCase{11, "Cumpleaños de Ana (1990)", ""}));

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

                      GarbledCase{"15/03/2024 10:00 07 D 00", true, true, "15/03/2024", "10:00"},
                      GarbledCase{"15/03/2024 10:00 7 D 00 0 x", false, true, "15/03/2024", "10:00"},

                      GarbledCase{"31/02/2024 10:00 07 D 00 0 x", false, false, "31/02/2024", "10:00"},

                      GarbledCase{"\xff\xfe/03/2024 10:00 00 D 14 0 x", false, false, "\xff\xfe/03/2024", "10:00"},
                      GarbledCase{"<<<<>>>>(((())))", false, false, "<<<<>>>>((", "())))"}));

TEST(Builders, TurnCommasIntoSemicolons) {
    EXPECT_EQ(BuildAlarmEntry("15/03/2024", "10:00", 1, "M", 7, "0", "a, b,c"), "15/03/2024 10:00 01 M 07 0 a; b;c");
    EXPECT_EQ(BuildRepetitionEntry("5/3/2024", "9:30", "a, b"), "05/03/2024 09:30 a; b");
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
