#include "calendar/range_collector.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "agenda/entries.h"
#include "calendar_entries.h"
#include "scripted_dialogs.h"

namespace vt {
namespace {

using test::ListOf;
using test::RepetitionOn;
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
        Projection{"one-off outside", Alarm("05/04/2024", 0, "D", "Dentista"), kMarch2024, {}},
        Projection{"priority mark", Alarm("05/03/2024", 0, "D", "Pago", "1"), kMarch2024, {"05/03/2024!Pago"}},
        Projection{"monthly from before the range",
                   Alarm("10/01/2024", 1, "M", "Cuota"),
                   {MakeDate(1, 3, 2024), MakeDate(31, 5, 2024)},
                   {"10/03/2024Cuota", "10/04/2024Cuota", "10/05/2024Cuota"}},
        Projection{"monthly stored later than the range start",
                   Alarm("10/04/2024", 1, "M", "Cuota"),
                   {MakeDate(1, 3, 2024), MakeDate(31, 5, 2024)},
                   {"10/04/2024Cuota", "10/05/2024Cuota"}},
        Projection{"month step from the 31st drifts",
                   Alarm("31/01/2024", 1, "M", "Fin"),
                   {MakeDate(1, 1, 2024), MakeDate(31, 3, 2024)},
                   {"31/01/2024Fin", "29/02/2024Fin", "29/03/2024Fin"}},
        Projection{"yearly",
                   Alarm("02/03/2020", 1, "A", "Boda"),
                   {MakeDate(1, 1, 2024), MakeDate(31, 12, 2025)},
                   {"02/03/2024Boda", "02/03/2025Boda"}},
        Projection{"every ten days", Alarm("25/02/2024", 10, "D", "Riego"), kMarch2024,
                   Items{"06/03/2024Riego", "16/03/2024Riego", "26/03/2024Riego"}},
        Projection{"daily only on its date", Alarm("04/03/2024", 1, "D", "Fichar"), kMarch2024, {"04/03/2024Fichar"}},
        Projection{"weekly only on its date", Alarm("04/03/2024", 7, "D", "Basura"), kMarch2024, {"04/03/2024Basura"}},
        Projection{"start tag hides earlier occurrences and leaves the text",
                   Alarm("10/01/2024", 1, "M", "Clase <150324>"),
                   {MakeDate(1, 3, 2024), MakeDate(30, 4, 2024)},
                   {"10/04/2024Clase"}},
        Projection{"start tag on a one-off after its date", Alarm("05/03/2024", 0, "D", "X <060324>"), kMarch2024, {}},
        Projection{
            "unknown unit only on its date", Alarm("05/03/2024", 1, "Q", "Raro"), kMarch2024, {"05/03/2024Raro"}},
        Projection{"unreadable date", "xx/03/2024 09:00 00 D 14 0 Roto", kMarch2024, {}}));

TEST(RangeCollector, OrdersByDayRepetitionsFirst) {
    ScriptedDialogs dialogs;
    const EntryList alarms = ListOf({Alarm("20/03/2024", 0, "D", "Tarde"), Alarm("01/03/2024", 1, "M", "Mensual"),
                                     Alarm("05/03/2024", 0, "D", "Alarma del 5")});
    const EntryList repetitions =
        ListOf({RepetitionOn(MakeDate(5, 3, 2024), "Repetición del 5"), RepetitionOn(MakeDate(2, 4, 2024), "Fuera")});
    const Items expected{"01/03/2024Mensual", "05/03/2024Repetición del 5", "05/03/2024Alarma del 5",
                         "20/03/2024Tarde"};
    EXPECT_EQ(CollectRangeItems(kMarch2024, alarms, repetitions, dialogs), expected);
}

TEST(RangeCollector, WidensToWholeMonths) {
    EXPECT_EQ(WidenToMonths(MakeDate(15, 11, 2024), MakeDate(10, 2, 2025)),
              (DateRange{MakeDate(1, 11, 2024), MakeDate(28, 2, 2025)}));
    EXPECT_EQ(WidenToMonths(MakeDate(3, 2, 2024), MakeDate(3, 2, 2024)),
              (DateRange{MakeDate(1, 2, 2024), MakeDate(29, 2, 2024)}));
}

TEST(RangeCollector, SplitsItems) {
    const ItemParts plain = SplitItem("05/03/2024Texto");
    EXPECT_EQ(plain.day, "05/03/2024");
    EXPECT_FALSE(plain.priority);
    EXPECT_EQ(plain.text, "Texto");
    const ItemParts marked = SplitItem("05/03/2024!Urgente");
    EXPECT_TRUE(marked.priority);
    EXPECT_EQ(marked.text, "Urgente");
}

// What the user types in the boxes, in order, and what comes of it.
struct Dialogue {
    const char* what;
    std::vector<std::optional<std::string>> typed;
    std::optional<DateRange> range;
    std::vector<std::string> messages;
    std::size_t boxes_asked;
};

class RangeDialogue : public ::testing::TestWithParam<Dialogue> {};

TEST_P(RangeDialogue, AsksUntilTheRangeReadsOrIsCancelled) {
    const Dialogue& c = GetParam();
    ScriptedDialogs dialogs;
    for (const auto& typed : c.typed) {
        dialogs.QueueInput(typed);
    }
    const auto collected = CollectRange(dialogs, "Calendario", MakeDate(11, 3, 2024), {}, {});
    ASSERT_EQ(collected.has_value(), c.range.has_value()) << c.what;
    if (collected) {
        EXPECT_EQ(collected->range, *c.range) << c.what;
    }
    EXPECT_EQ(dialogs.Texts(), c.messages) << c.what;
    EXPECT_EQ(dialogs.Asked().size(), c.boxes_asked) << c.what;
}

const std::string kFormat = "Formato no válido (ddmmyy).";

INSTANTIATE_TEST_SUITE_P(
    Boxes, RangeDialogue,
    ::testing::Values(
        Dialogue{
            "two good dates", {"151124", "10022025"}, DateRange{MakeDate(1, 11, 2024), MakeDate(28, 2, 2025)}, {}, 2},
        Dialogue{"cancel the start", {std::nullopt}, std::nullopt, {}, 1},
        Dialogue{"cancel the end", {"151124", std::nullopt}, std::nullopt, {}, 2},
        Dialogue{"bad start asked again",
                 {"15/11/24", "151124", "301124"},
                 DateRange{MakeDate(1, 11, 2024), MakeDate(30, 11, 2024)},
                 {kFormat},
                 3},
        Dialogue{"end before start asked again",
                 {"151124", "101124", "101224"},
                 DateRange{MakeDate(1, 11, 2024), MakeDate(31, 12, 2024)},
                 {kEndBeforeStartMessage},
                 3},
        Dialogue{"end before start then cancel",
                 {"151124", "101124", std::nullopt},
                 std::nullopt,
                 {kEndBeforeStartMessage},
                 3},
        Dialogue{"same day", {"151124", "151124"}, DateRange{MakeDate(1, 11, 2024), MakeDate(30, 11, 2024)}, {}, 2}));

TEST(RangeCollector, BoxesStartFromTodayAndTheStart) {
    ScriptedDialogs dialogs;
    dialogs.QueueInput("151124");
    dialogs.QueueInput(std::nullopt);
    CollectRange(dialogs, "Listado", MakeDate(11, 3, 2024), {}, {});
    ASSERT_EQ(dialogs.Asked().size(), 2u);
    EXPECT_EQ(dialogs.Asked()[0].prompt, kStartDatePrompt);
    EXPECT_EQ(dialogs.Asked()[0].initial, "110324");
    EXPECT_EQ(dialogs.Asked()[0].title, "Listado");
    EXPECT_EQ(dialogs.Asked()[1].prompt, kEndDatePrompt);
    EXPECT_EQ(dialogs.Asked()[1].initial, "151124");
}

}  // namespace
}  // namespace vt
