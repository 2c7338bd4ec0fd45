// The program's side of the independent check (check_with_icalendar.py): exports a varied
// agenda and prints the dates the program's own rule gives it, or prints what an import of a
// given file would add. Time zone Europe/Madrid, the present moment from the command line.
#include <cstdio>
#include <iostream>
#include <string>

#include "agenda/entries.h"
#include "ical/ics_common.h"
#include "ical/ics_export.h"
#include "ical/ics_import.h"
#include "store/text_file.h"

namespace {

constexpr const char* kZone = "Europe/Madrid";

// Every repeat choice, and the oddities the program's rule has: the 31st and 30th drifting, the
// 29th of February, a working-day alarm stored on a Saturday, a start tag, a hidden alarm, a
// priority alarm with notice days and an anniversary, a text with ";", accents and "€".
const char* const kAgenda[] = {
    "15/01/2024 10:00 00 D 14 0 Nunca: dentista",
    "10/01/2024 09:30 01 D 00 0 Diario: fichar",
    "13/01/2024 11:00 01 D 00 0 Diario guardado en sábado",
    "13/01/2024 11:00 07 D 00 0 Semanal en sábado",
    "15/01/2024 08:00 01 M 07 0 Mensual: nómina",
    "31/01/2024 08:00 01 M 07 0 Mensual del 31",
    "30/11/2024 12:00 03 M 07 0 Trimestral del 30",
    "29/02/2024 00:00 01 A 14 0 Anual del 29 de febrero",
    "20/05/2024 18:45 02 A 14 0 Cada 2 años",
    "21/05/2024 18:45 04 A 14 0 Cada 4 años",
    "22/05/2024 18:45 06 A 14 0 Cada 6 años",
    "12/01/2024 07:15 07 D 00 0 Con inicio <020224>",
    "16/01/2024 10:00 01 M 07 0 -Oculta en el calendario",
    "25/01/2024 10:00 01 A 14 1 Boda (1998)",
    "18/01/2024 17:00 07 D 00 0 Café; té y 5 € en Álava",
};

int Usage() {
    std::cerr << "uso: ics_check_driver export|import FICHERO yyyy-mm-ddThh:mm\n";
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        return Usage();
    }
    const std::string command = argv[1];
    const std::string file = argv[2];
    int year = 0, month = 0, day = 0, hour = 0, minute = 0;
    if (std::sscanf(argv[3], "%d-%d-%dT%d:%d", &year, &month, &day, &hour, &minute) != 5) {
        return Usage();
    }
    const vt::DateTime now = vt::MakeDateTime(vt::MakeDate(day, month, year), hour, minute);
    if (command == "export") {
        vt::Settings agenda;
        for (const char* entry : kAgenda) {
            vt::AppendAlarm(agenda.Alarms, entry);
        }
        vt::AppendRepetition(agenda.Repetitions, "11/01/2024 17:30 Recordatorio pendiente");
        const vt::IcsExport out = vt::ExportAgendaToIcs(agenda, now, kZone);
        if (vt::WriteFileAtomically(file, out.text)) {  // an error code
            return 1;
        }
        // One line per date: summary, tab, "yyyy-mm-dd hh:mm", for the two years from today.
        const vt::Date today = vt::DateOf(now);
        for (const char* entry : kAgenda) {
            const std::string time = vt::GetAlarmField(entry, 2);
            for (const vt::Date d : vt::AlarmOccurrences(entry, today, vt::AddYears(today, 2))) {
                if (vt::GetAlarmField(entry, 6).rfind('-', 0) == 0) {
                    continue;  // hidden: the calendar shows it on no day
                }
                std::printf("%s\t%04d-%02u-%02u %s\n", vt::GetAlarmField(entry, 11).c_str(), static_cast<int>(d.year()),
                            static_cast<unsigned>(d.month()), static_cast<unsigned>(d.day()), time.c_str());
            }
        }
        return 0;
    }
    if (command == "import") {
        const vt::FileContents contents = vt::ReadWholeFile(file);
        const vt::IcsImportPlan plan = vt::PlanIcsImport(contents.bytes, vt::Settings{}, now, kZone);
        for (const std::string& entry : plan.alarms) {
            std::printf("ALARMA\t%s\n", entry.c_str());
        }
        for (const std::string& line : plan.simplified) {
            std::printf("SIMPLIFICADA\t%s\n", line.c_str());
        }
        for (const std::string& line : plan.unreadable) {
            std::printf("ILEGIBLE\t%s\n", line.c_str());
        }
        std::printf("PASADOS\t%d\n", plan.past);
        return 0;
    }
    return Usage();
}
