// The wall calendars with a full agenda (998 alarms and 998 repetitions, the most the settings
// file holds): ten years of pages, 120 files, collected and written.
// Target: 500 ms or less for the whole run.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "agenda/entries.h"
#include "calendar/html_calendar.h"
#include "calendar/range_collector.h"
#include "platform/dialogs.h"

namespace {

class SilentDialogs : public vt::Dialogs {
public:
    vt::MsgAnswer ShowBox(const vt::MessageBox&) override { return vt::MsgAnswer::Ok; }
    std::optional<std::string> AskText(const vt::InputBox&) override { return std::nullopt; }
};

const vt::Date kStart = vt::MakeDate(1, 1, 2024);

// A mix of one-off, monthly, yearly and every-few-days alarms, some with a priority mark, an
// anniversary year or a start date, as real agendas have.
vt::EntryList FullAlarms() {
    vt::EntryList list;
    static const char* const kUnits[] = {"D", "M", "A", "A", "D"};
    static const int kCounts[] = {0, 1, 1, 1, 10};
    for (int i = 0; i < 998; ++i) {
        const vt::Date date = vt::AddDays(kStart, (i * 13) % 365);
        const std::string text = "Alarma " + std::to_string(i) + (i % 3 == 0 ? " (1990) <010124>" : " texto");
        list.Append(vt::BuildAlarmEntry(vt::FormatDate(date), "09:30", kCounts[i % 5], kUnits[i % 5], 14,
                                        i % 10 == 0 ? "1" : "0", text));
    }
    vt::SortAlarms(list);
    return list;
}

vt::EntryList FullRepetitions() {
    vt::EntryList list;
    for (int i = 0; i < 998; ++i) {
        list.Append(vt::BuildRepetitionEntry(vt::FormatDate(vt::AddDays(kStart, (i * 11) % 3650)), "10:00",
                                             "Repetición " + std::to_string(i)));
    }
    return list;
}

void BM_TenYearsOfPages(benchmark::State& state) {
    const vt::EntryList alarms = FullAlarms();
    const vt::EntryList repetitions = FullRepetitions();
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "vt_bench_html_calendar";
    std::filesystem::create_directories(folder);
    const std::string prefix = folder.string() + "/";
    SilentDialogs dialogs;
    std::size_t pages = 0;
    std::size_t items = 0;
    for (auto _ : state) {
        vt::CollectedRange collected;
        collected.range = vt::WidenToMonths(kStart, vt::MakeDate(31, 12, 2033));
        collected.items = vt::CollectRangeItems(collected.range, alarms, repetitions, dialogs);
        pages = vt::WriteCalendarPages(prefix, collected, "C").written.size();
        items = collected.items.size();
    }
    state.counters["pages"] = static_cast<double>(pages);
    state.counters["items"] = static_cast<double>(items);
    std::filesystem::remove_all(folder);
}
BENCHMARK(BM_TenYearsOfPages)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
