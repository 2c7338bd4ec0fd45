#include "calendar/range_collector.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "agenda/entries.h"
#include "calendar_entries.h"
#include "scripted_dialogs.h"

namespace vt {
namespace {

using test::ListOf;
using test::ScriptedDialogs;
using Items = std::vector<std::string>;

std::string Alarm(const char* date, int count, const char* unit, const char* text, const char* priority = "0") {
    return BuildAlarmEntry(date, "09:00", count, unit, 14, priority, text);
}

const DateRange kMarch2024{MakeDate(1, 3, 2024), MakeDate(31, 3, 2024)};

struct Projection {
    const char* what;
    std::string alarm;
    DateRange range;
    Items expected;
};

class RangeProjection : public ::testing::TestWithParam<Projection> {};

TEST_P(RangeProjection, PlacesTheAlarmOnItsDays) {
    const Projection& c = GetParam();
    ScriptedDialogs dialogs;
    EXPECT_EQ(CollectRangeItems(c.range, ListOf({c.alarm}), {}, dialogs), c.expected) << c.what;
    EXPECT_TRUE(dialogs.Shown().empty()) << c.what;
}

INSTANTIATE_TEST_SUITE_P(
    Alarms, RangeProjection,
    ::testing::Values(
        Projection{"one-off inside", Alarm("05/03/2024", 0, "D", "Dentista"), kMarch2024, {"05/03/2024Dentista"}},
        Projection{"priority mark", Alarm("05/03/2024", 0, "D", "Pago", "1"), kMarch2024, {"05/03/2024!Pago"}},
        Projection{"monthly from before the range",
                   Alarm("10/01/2024", 1, "M", "Cuota"),
                   {MakeDate(1, 3, 2024), MakeDate(31, 5, 2024)},
                   {"10/03/2024Cuota", "10/04/2024Cuota", "10/05/2024Cuota"}},
        Projection{"month step from the 31st drifts",
                   Alarm("31/01/2024", 1, "M", "Fin"),
                   {MakeDate(1, 1, 2024), MakeDate(31, 3, 2024)},
                   {"31/01/2024Fin", "29/02/2024Fin", "29/03/2024Fin"}},
        Projection{"yearly",
                   Alarm("02/03/2020", 1, "A", "Boda"),
                   {MakeDate(1, 1, 2024), MakeDate(31, 12, 2025)},
                   {"02/03/2024Boda", "02/03/2025Boda"}},
        Projection{"daily only on its date", Alarm("04/03/2024", 1, "D", "Fichar"), kMarch2024, {"04/03/2024Fichar"}},
        Projection{"weekly only on its date", Alarm("04/03/2024", 7, "D", "Basura"), kMarch2024, {"04/03/2024Basura"}},
        Projection{"start tag hides earlier occurrences and leaves the text",
                   Alarm("10/01/2024", 1, "M", "Clase <150324>"),
                   {MakeDate(1, 3, 2024), MakeDate(30, 4, 2024)},
                   {"10/04/2024Clase"}},
        Projection{"unreadable date", "xx/03/2024 09:00 00 D 14 0 Roto", kMarch2024, {}}));

TEST(RangeCollector, WidensToWholeMonths) {
    EXPECT_EQ(WidenToMonths(MakeDate(15, 11, 2024), MakeDate(10, 2, 2025)),
              (DateRange{MakeDate(1, 11, 2024), MakeDate(28, 2, 2025)}));
}

}  // namespace
}  // namespace vt
