// The program's side of the independent check (check_with_icalendar.py), in the time zone
// Europe/Madrid at the present moment given on the command line:
//   export FILE NOW ALARM...  writes the given alarms and one pending reminder to FILE as
//                             iCalendar, and prints the dates the program's own rule gives them
//   import FILE NOW           prints what an import of FILE would add
#include <cstdio>
#include <string>

#include "agenda/entries.h"
#include "ical/ics_common.h"
#include "ical/ics_export.h"
#include "ical/ics_import.h"
#include "store/text_file.h"

int main(int argc, char** argv) {
    constexpr const char* kZone = "Europe/Madrid";
    const std::string command = argc >= 4 ? argv[1] : "";
    int year = 0, month = 0, day = 0, hour = 0, minute = 0;
    if ((command != "export" && command != "import") ||
        std::sscanf(argv[3], "%d-%d-%dT%d:%d", &year, &month, &day, &hour, &minute) != 5) {
        std::fprintf(stderr, "uso: ics_check_driver export|import FICHERO yyyy-mm-ddThh:mm [ALARMA...]\n");
        return 2;
    }
    const vt::DateTime now = vt::MakeDateTime(vt::MakeDate(day, month, year), hour, minute);
    if (command == "import") {
        const vt::IcsImportPlan plan = vt::PlanIcsImport(vt::ReadWholeFile(argv[2]).bytes, vt::Settings{}, now, kZone);
        for (const auto& [kind, lines] :
             {std::pair{"ALARMA", &plan.alarms}, std::pair{"SIMPLIFICADA", &plan.simplified},
              std::pair{"ILEGIBLE", &plan.unreadable}}) {
            for (const std::string& line : *lines) {
                std::printf("%s\t%s\n", kind, line.c_str());
            }
        }
        std::printf("PASADOS\t%d\n", plan.past);
        return 0;
    }
    vt::Settings agenda;
    for (int i = 4; i < argc; ++i) {
        vt::AppendAlarm(agenda.Alarms, argv[i]);
    }
    vt::AppendRepetition(agenda.Repetitions, "11/01/2024 17:30 Recordatorio pendiente");
    if (vt::WriteFileAtomically(argv[2], vt::ExportAgendaToIcs(agenda, now, kZone).text)) {  // an error code
        return 1;
    }
    // One line per date: summary, tab, "yyyy-mm-dd hh:mm", for the two years from today. A hidden
    // alarm ("-" before its text) is shown by the calendar on no day.
    const vt::Date today = vt::DateOf(now);
    for (int i = 4; i < argc; ++i) {
        for (const vt::Date d : vt::AlarmOccurrences(argv[i], today, vt::AddYears(today, 2))) {
            if (!vt::GetAlarmField(argv[i], 6).starts_with('-')) {
                std::printf("%s\t%04d-%02u-%02u %s\n", vt::GetAlarmField(argv[i], 11).c_str(),
                            static_cast<int>(d.year()), static_cast<unsigned>(d.month()),
                            static_cast<unsigned>(d.day()), vt::GetAlarmField(argv[i], 2).c_str());
            }
        }
    }
    return 0;
}
