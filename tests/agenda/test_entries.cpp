#include "agenda/entries.h"

#include <gtest/gtest.h>

#include <tuple>

#include "entry_lists.h"

namespace vt {
namespace {

using test::Items;
using test::ListOf;
using Lines = std::vector<std::string>;

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

// The one-walk reader finds every field where the single readers do: accented letters before
// the text, invalid UTF-8, entries cut short.
TEST(EntryReaders, ReadAlarmFindsWhatTheSingleReadersFind) {
    for (const std::string entry :
         {"29/02/2024 07:05 99 A 14 0 x", "01/01/2030 \u00E97:05 01 \u00F1 00 \u00E1 A\u00F1o",
          "01/01/2030 07:05 01 D 0\xFF 1 t", "01/01/2030 07:05 01 D", "\xC3/01/2030", ""}) {
        const AlarmParts parts = ReadAlarm(entry);
        EXPECT_EQ(std::tuple(parts.date, parts.minutes, parts.count, parts.notice_days),
                  std::tuple(AlarmDate(entry), AlarmTime(entry), AlarmCount(entry), AlarmNoticeDays(entry)));
        EXPECT_EQ(
            (Lines{std::string(parts.time), std::string(parts.unit), std::string(parts.priority),
                   std::string(parts.text)}),
            (Lines{GetAlarmField(entry, 2), GetAlarmField(entry, 3), GetAlarmField(entry, 9), GetAlarmField(entry, 6)}))
            << entry;
    }
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
