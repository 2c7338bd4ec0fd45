#include "calendar/range_collector.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <tuple>
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

TEST(RangeCollector, PlacesEachAlarmOnItsDays) {
    const DateRange march_to_may{MakeDate(1, 3, 2024), MakeDate(31, 5, 2024)};
    for (const auto& [what, alarm, range, expected] :
         std::vector<std::tuple<const char*, std::string, DateRange, Items>>{
             {"one-off inside", Alarm("05/03/2024", 0, "D", "Dentista"), kMarch2024, {"05/03/2024Dentista"}},
             {"one-off outside", Alarm("05/04/2024", 0, "D", "Dentista"), kMarch2024, {}},
             {"priority mark", Alarm("05/03/2024", 0, "D", "Pago", "1"), kMarch2024, {"05/03/2024!Pago"}},
             {"monthly from before the range",
              Alarm("10/01/2024", 1, "M", "Cuota"),
              march_to_may,
              {"10/03/2024Cuota", "10/04/2024Cuota", "10/05/2024Cuota"}},
             {"monthly stored later than the range start",
              Alarm("10/04/2024", 1, "M", "Cuota"),
              march_to_may,
              {"10/04/2024Cuota", "10/05/2024Cuota"}},
             {"every ten days",
              Alarm("25/02/2024", 10, "D", "Riego"),
              kMarch2024,
              {"06/03/2024Riego", "16/03/2024Riego", "26/03/2024Riego"}},
             {"month step from the 31st drifts",
              Alarm("31/01/2024", 1, "M", "Fin"),
              {MakeDate(1, 1, 2024), MakeDate(31, 3, 2024)},
              {"31/01/2024Fin", "29/02/2024Fin", "29/03/2024Fin"}},
             {"yearly",
              Alarm("02/03/2020", 1, "A", "Boda"),
              {MakeDate(1, 1, 2024), MakeDate(31, 12, 2025)},
              {"02/03/2024Boda", "02/03/2025Boda"}},
             {"daily only on its date", Alarm("04/03/2024", 1, "D", "Fichar"), kMarch2024, {"04/03/2024Fichar"}},
             {"weekly only on its date", Alarm("04/03/2024", 7, "D", "Basura"), kMarch2024, {"04/03/2024Basura"}},
             {"start tag hides earlier occurrences and leaves the text",
              Alarm("10/01/2024", 1, "M", "Clase <150324>"),
              {MakeDate(1, 3, 2024), MakeDate(30, 4, 2024)},
              {"10/04/2024Clase"}},
             {"start tag on a one-off after its date", Alarm("05/03/2024", 0, "D", "X <060324>"), kMarch2024, {}},
             {"unknown unit only on its date", Alarm("05/03/2024", 1, "Q", "Raro"), kMarch2024, {"05/03/2024Raro"}},
             {"unreadable date", "xx/03/2024 09:00 00 D 14 0 Roto", kMarch2024, {}},
         }) {
        ScriptedDialogs dialogs;
        EXPECT_EQ(CollectRangeItems(range, ListOf({alarm}), {}, dialogs), expected) << what;
        EXPECT_TRUE(dialogs.Shown().empty()) << what;
    }
}

TEST(RangeCollector, OrdersByDayRepetitionsFirst) {
    ScriptedDialogs dialogs;
    const EntryList alarms = ListOf({Alarm("20/03/2024", 0, "D", "Tarde"), Alarm("01/03/2024", 1, "M", "Mensual"),
                                     Alarm("05/03/2024", 0, "D", "Alarma del 5")});
    const EntryList repetitions =
        ListOf({RepetitionOn(MakeDate(5, 3, 2024), "Repetición del 5"), RepetitionOn(MakeDate(2, 4, 2024), "Fuera")});
    EXPECT_EQ(CollectRangeItems(kMarch2024, alarms, repetitions, dialogs),
              (Items{"01/03/2024Mensual", "05/03/2024Repetición del 5", "05/03/2024Alarma del 5", "20/03/2024Tarde"}));
}

TEST(RangeCollector, WidensToWholeMonths) {
    EXPECT_EQ(WidenToMonths(MakeDate(15, 11, 2024), MakeDate(10, 2, 2025)),
              (DateRange{MakeDate(1, 11, 2024), MakeDate(28, 2, 2025)}));
    EXPECT_EQ(WidenToMonths(MakeDate(3, 2, 2024), MakeDate(3, 2, 2024)),
              (DateRange{MakeDate(1, 2, 2024), MakeDate(29, 2, 2024)}));
}

// The two boxes are asked until both read as dates in order, or one is cancelled. The start box
// offers today, the end box the start just typed.
TEST(RangeCollector, AsksUntilTheRangeReadsOrIsCancelled) {
    const std::string bad_format = "Formato no válido (ddmmyy).";
    const std::optional<std::string> cancel;
    const auto months = [](int first_month, int last_month, int last_day) {
        return DateRange{MakeDate(1, first_month, 2024), MakeDate(last_day, last_month, 2024)};
    };
    for (const auto& [what, typed, range, messages] :
         std::vector<std::tuple<const char*, std::vector<std::optional<std::string>>, std::optional<DateRange>,
                                std::vector<std::string>>>{
             {"two good dates", {"151124", "101224"}, months(11, 12, 31), {}},
             {"cancel the start", {cancel}, std::nullopt, {}},
             {"cancel the end", {"151124", cancel}, std::nullopt, {}},
             {"bad start asked again", {"15/11/24", "151124", "301124"}, months(11, 11, 30), {bad_format}},
             {"end before start asked again",
              {"151124", "101124", "101224"},
              months(11, 12, 31),
              {kEndBeforeStartMessage}},
             {"end before start then cancel", {"151124", "101124", cancel}, std::nullopt, {kEndBeforeStartMessage}},
             {"same day", {"151124", "151124"}, months(11, 11, 30), {}},
         }) {
        ScriptedDialogs dialogs;
        for (const auto& text : typed) {
            dialogs.QueueInput(text);
        }
        const auto collected = CollectRange(dialogs, "Listado", MakeDate(11, 3, 2024), {}, {});
        EXPECT_EQ(collected ? std::optional<DateRange>(collected->range) : std::nullopt, range) << what;
        EXPECT_EQ(dialogs.Texts(), messages) << what;
        ASSERT_EQ(dialogs.Asked().size(), typed.size()) << what;
        EXPECT_EQ(dialogs.Asked()[0].prompt, kStartDatePrompt) << what;
        EXPECT_EQ(dialogs.Asked()[0].initial, "110324") << what;
        EXPECT_EQ(dialogs.Asked()[0].title, "Listado") << what;
        // Every end box offers the start typed, 151124 in each case.
        for (const auto& box : dialogs.Asked()) {
            if (box.prompt == kEndDatePrompt) {
                EXPECT_EQ(box.initial, "151124") << what;
            }
        }
        EXPECT_EQ(dialogs.Asked().back().prompt, typed.size() == 1 ? kStartDatePrompt : kEndDatePrompt) << what;
    }
}

}  // namespace
}  // namespace vt
