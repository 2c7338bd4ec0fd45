// Feeds arbitrary bytes to the iCalendar import, as a file from any calendar program (or any
// file at all) reaches it. Nothing may crash or hang, and whatever the plan adds must be an
// entry the agenda reads: one line, no comma, a date, time and repeat choice that read.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "agenda/entries.h"
#include "ical/ics_import.h"

namespace {

void Check(bool condition) {
    if (!condition) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    vt::Settings agenda;
    vt::AppendAlarm(agenda.Alarms, "15/01/2024 10:00 07 D 00 0 Equipo");
    const vt::DateTime now = vt::MakeDateTime(vt::MakeDate(10, 1, 2024), 8, 0);
    const vt::IcsImportPlan plan = vt::PlanIcsImport(bytes, agenda, now, "Europe/Madrid");
    Check(plan.alarms.size() <= 997);
    for (const std::string& entry : plan.alarms) {
        Check(vt::AlarmReadable(entry));
        Check(entry.find_first_of("\r\n,") == std::string::npos);
        Check(*vt::AlarmDate(entry) >= vt::DateOf(now));
    }
    for (const std::string& entry : plan.reminders) {
        Check(vt::RepetitionMoment(entry).has_value());
        Check(entry.find_first_of("\r\n,") == std::string::npos);
    }
    Check(!vt::ImportQuestion(plan).empty());
    return 0;
}
