// The iCalendar exchange. Targets: exporting 998 alarms that all need ten years of dates
// written out: 200 ms or less; planning the import of a 10,000-event file up to the list of
// what will be added: 500 ms or less.
#include <benchmark/benchmark.h>

#include <string>

#include "agenda/entries.h"
#include "ical/ics_export.h"
#include "ical/ics_import.h"

namespace {

const vt::DateTime kNow = vt::MakeDateTime(vt::MakeDate(10, 1, 2024), 8, 0);

// Every alarm a month or three months from the 29th to the 31st, or a year from 29/02: none of
// them has an exact RRULE, so each carries its ten years of dates.
vt::Settings DriftingAgenda() {
    vt::Settings settings;
    for (int i = 0; i < 998; ++i) {
        const int day = 29 + i % 3;
        const std::string date = i % 10 == 9 ? "29/02/2024" : std::to_string(day) + "/01/2024";
        const bool yearly = i % 10 == 9;
        vt::AppendAlarm(settings.Alarms,
                        vt::BuildAlarmEntry(date, vt::FormatTimeOfDay((i * 13) % 1440), yearly ? 1 : (i % 2 ? 3 : 1),
                                            yearly ? "A" : "M", 7, "0", "Alarma número " + std::to_string(i)));
    }
    return settings;
}

// 10,000 events as a calendar program writes them: a zone, weekly, monthly and yearly rules,
// rules the program simplifies, exceptions, all-day events and single events.
std::string TenThousandEvents() {
    std::string ics = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//bench//ES\r\n";
    const char* const kRules[] = {"RRULE:FREQ=WEEKLY\r\n",
                                  "RRULE:FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR\r\n",
                                  "RRULE:FREQ=MONTHLY\r\n",
                                  "RRULE:FREQ=YEARLY\r\n",
                                  "RRULE:FREQ=DAILY\r\nEXDATE;TZID=Europe/Madrid:20240115T100000\r\n",
                                  "RRULE:FREQ=WEEKLY;COUNT=40\r\n",
                                  "",
                                  ""};
    for (int i = 0; i < 10000; ++i) {
        char start[32];
        std::snprintf(start, sizeof start, "2023%02d%02dT%02d%02d00", 1 + i % 12, 1 + i % 28, 6 + i % 12, i % 60);
        ics += "BEGIN:VEVENT\r\nUID:ev" + std::to_string(i) + "@bench\r\nDTSTAMP:20240101T000000Z\r\n";
        ics += i % 16 == 7 ? std::string("DTSTART;VALUE=DATE:") + std::string(start, 8) + "\r\n"
                           : std::string("DTSTART;TZID=Europe/Madrid:") + start + "\r\n";
        ics += kRules[i % 8];
        ics += "SUMMARY:Evento número " + std::to_string(i) + "\r\n";
        ics += "BEGIN:VALARM\r\nACTION:DISPLAY\r\nDESCRIPTION:Aviso\r\nTRIGGER:-PT15M\r\nEND:VALARM\r\nEND:VEVENT\r\n";
    }
    return ics + "END:VCALENDAR\r\n";
}

void BM_Export998AlarmsWithTenYearsOfDates(benchmark::State& state) {
    const vt::Settings agenda = DriftingAgenda();
    for (auto _ : state) {
        const vt::IcsExport out = vt::ExportAgendaToIcs(agenda, kNow, "Europe/Madrid");
        benchmark::DoNotOptimize(out.text.data());
    }
}
BENCHMARK(BM_Export998AlarmsWithTenYearsOfDates)->Unit(benchmark::kMillisecond);

void BM_PlanImportOf10000Events(benchmark::State& state) {
    const std::string ics = TenThousandEvents();
    for (auto _ : state) {
        const vt::IcsImportPlan plan = vt::PlanIcsImport(ics, vt::Settings{}, kNow, "Europe/Madrid");
        benchmark::DoNotOptimize(plan.alarms.data());
        state.counters["added"] = static_cast<double>(plan.alarms.size());
    }
}
BENCHMARK(BM_PlanImportOf10000Events)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
