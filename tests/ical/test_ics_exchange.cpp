#include <gtest/gtest.h>

#include <regex>
#include <sstream>

#include "agenda/entries.h"
#include "ical/exportar_ics_command.h"
#include "ical/ics_export.h"
#include "ical/ics_import.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

constexpr const char* kZone = "Europe/Madrid";
// Wednesday 10 January 2024, 08:00.
const DateTime kNow = MakeDateTime(MakeDate(10, 1, 2024), 8, 0);

Settings AgendaOf(std::initializer_list<std::string> alarms, std::initializer_list<std::string> reminders = {}) {
    Settings settings;
    for (const std::string& a : alarms) {
        AppendAlarm(settings.Alarms, a);
    }
    for (const std::string& r : reminders) {
        AppendRepetition(settings.Repetitions, r);
    }
    return settings;
}

std::string WithoutOwnProperties(const std::string& ics) {
    return std::regex_replace(ics, std::regex("X-VENDRAKO-[A-Z]+:[^\r]*\r\n"), "");
}

// Every repeat choice, and the marks a text may carry, come back from the exported file into an
// empty agenda exactly as they were stored. Where the standard properties say it all, they
// alone bring it back too (without the program's own X- properties).
TEST(IcsRoundTrip, EveryRepeatChoiceComesBackByteForByte) {
    const struct {
        const char* entry;
        bool standard_alone;
    } cases[] = {
        {"15/01/2024 10:00 00 D 14 0 Dentista", true},
        {"10/01/2024 09:30 01 D 00 0 Fichar; luego café", true},
        {"13/01/2024 11:00 07 D 00 1 Sábado de compras €", true},
        {"15/01/2024 08:00 01 M 07 0 Nómina (1998)", true},
        {"31/01/2024 08:00 01 M 07 0 Fin de mes", false},
        {"28/02/2024 12:00 03 M 07 0 Trimestre", true},
        {"29/02/2024 00:00 01 A 14 0 Bisiesto", false},
        {"20/05/2024 18:45 02 A 14 0 Revisión", true},
        {"20/05/2024 18:45 04 A 14 1 Olimpiada", true},
        {"20/05/2024 18:45 06 A 14 0 Pasaporte <200524>", false},
        {"10/01/2024 08:00 00 D 14 0 Ahora mismo", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.entry);
        const Settings agenda = AgendaOf({c.entry});
        const IcsExport exported = ExportAgendaToIcs(agenda, kNow, kZone);
        ASSERT_EQ(exported.alarms, 1);
        const IcsImportPlan plan = PlanIcsImport(exported.text, Settings{}, kNow, kZone);
        EXPECT_EQ(plan.alarms, std::vector<std::string>{c.entry});
        EXPECT_TRUE(plan.simplified.empty() && plan.unreadable.empty());
        const IcsImportPlan standard = PlanIcsImport(WithoutOwnProperties(exported.text), Settings{}, kNow, kZone);
        EXPECT_EQ(standard.alarms == plan.alarms, c.standard_alone);
    }
}

// Files as other programs write them, and files that are no calendar at all.
TEST(IcsImport, TakesWhatItCanAndSaysWhatItCannot) {
    const std::string head = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//t//t//ES\r\n";
    const std::string tail = "END:VCALENDAR\r\n";
    const auto event = [](const std::string& body) { return "BEGIN:VEVENT\r\nUID:x\r\n" + body + "END:VEVENT\r\n"; };
    const struct {
        const char* name;
        std::string text;
        std::vector<std::string> alarms;
        std::size_t simplified;
        std::size_t unreadable;
        int past;
        bool calendar;
    } cases[] = {
        {"NotACalendar", "Hola, esto no es un calendario.", {}, 0, 0, 0, false},
        {"Empty", "", {}, 0, 0, 0, false},
        {"OnlyTheHeader", "BEGIN:VCALENDAR", {}, 0, 0, 0, true},
        {"AllDayInUtcFile",
         head + event("DTSTART;VALUE=DATE:20240120\r\nSUMMARY:Cumple\r\n") + tail,
         {"20/01/2024 00:00 00 D 14 0 Cumple"},
         0,
         0,
         0,
         true},
        {"UtcTimeMovesToLocal",
         head + event("DTSTART:20240120T100000Z\r\nSUMMARY:Vuelo\r\nPRIORITY:3\r\n") + tail,
         {"20/01/2024 11:00 00 D 14 1 Vuelo"},
         0,
         0,
         0,
         true},
        {"NewYorkTime",
         head + event("DTSTART;TZID=America/New_York:20240120T100000\r\nSUMMARY:Call\r\n") + tail,
         {"20/01/2024 16:00 00 D 14 0 Call"},
         0,
         0,
         0,
         true},
        {"UnknownZone",
         head + event("DTSTART;TZID=Mars/Olympus:20240120T100000\r\nSUMMARY:Marte\r\n") + tail,
         {},
         0,
         1,
         0,
         true},
        {"NoStart", head + event("SUMMARY:Nada\r\n") + tail, {}, 0, 1, 0, true},
        {"Past", head + event("DTSTART:20200101T100000\r\nSUMMARY:Viejo\r\n") + tail, {}, 0, 0, 1, true},
        {"EveryDayIsNotTheWorkingDayChoice",
         head + event("DTSTART:20230102T090000\r\nRRULE:FREQ=DAILY\r\nSUMMARY:Pastilla\r\n") + tail,
         {"10/01/2024 09:00 00 D 14 0 Pastilla"},
         1,
         0,
         0,
         true},
        {"EndlessHourlyRule",
         head + event("DTSTART:20231201T000000\r\nRRULE:FREQ=HOURLY;INTERVAL=7\r\nSUMMARY:Tic\r\n") + tail,
         {"10/01/2024 13:00 00 D 14 0 Tic"},
         1,
         0,
         0,
         true},
        {"EveryMinuteSince1970",
         head + event("DTSTART:19700101T000000\r\nRRULE:FREQ=MINUTELY\r\nSUMMARY:Tic\r\n") + tail,
         {"10/01/2024 08:00 00 D 14 0 Tic"},
         1,
         0,
         0,
         true},
        {"CountedEveryMinuteSince1970IsGivenUp",
         head + event("DTSTART:19700101T000000\r\nRRULE:FREQ=MINUTELY;COUNT=999999999\r\nSUMMARY:Tic\r\n") + tail,
         {},
         0,
         1,
         0,
         true},
        {"CountedRuleIsSimplified",
         head + event("DTSTART:20240108T100000\r\nRRULE:FREQ=WEEKLY;COUNT=3\r\nSUMMARY:Curso\r\n") + tail,
         {"15/01/2024 10:00 00 D 14 0 Curso"},
         1,
         0,
         0,
         true},
        {"FinishedRuleIsPast",
         head + event("DTSTART:20230108T100000\r\nRRULE:FREQ=WEEKLY;COUNT=3\r\nSUMMARY:Curso\r\n") + tail,
         {},
         0,
         0,
         1,
         true},
        {"MonthlyWithComingExceptionIsSimplified",
         head + event("DTSTART:20231215T100000\r\nRRULE:FREQ=MONTHLY\r\nEXDATE:20240115T100000\r\nSUMMARY:Pago\r\n") +
             tail,
         {"15/02/2024 10:00 00 D 14 0 Pago"},
         1,
         0,
         0,
         true},
        {"MonthlyWithPastExceptionIsTheChoice",
         head +
             event("DTSTART:20231115T100000\r\nRRULE:FREQ=MONTHLY\r\nEXDATE:20231215T100000\r\nSUMMARY:Pago\r\n"
                   "BEGIN:VALARM\r\nACTION:DISPLAY\r\nTRIGGER:-P1W\r\nEND:VALARM\r\n") +
             tail,
         {"15/01/2024 10:00 01 M 07 0 Pago"},
         0,
         0,
         0,
         true},
        {"TextOutsideWindows1252AndLineBreaks",
         head + event("DTSTART:20240120T100000\r\nSUMMARY:Caf\xC3\xA9 \xE2\x98\x95\\nbis\r\n") + tail,
         {"20/01/2024 10:00 00 D 14 0 Café ? bis"},
         1,
         0,
         0,
         true},
        {"CutInTheMiddleOfTheSecondEvent",
         head + event("DTSTART:20240120T100000\r\nSUMMARY:Entero\r\n") + "BEGIN:VEVENT\r\nDTSTART:2024012",
         {"20/01/2024 10:00 00 D 14 0 Entero"},
         0,
         1,
         0,
         true},
        {"SameEventTwice",
         head + event("DTSTART:20240120T100000\r\nSUMMARY:Doble\r\n") +
             event("DTSTART:20240120T100000\r\nSUMMARY:Doble\r\n") + tail,
         {"20/01/2024 10:00 00 D 14 0 Doble"},
         0,
         0,
         0,
         true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const IcsImportPlan plan = PlanIcsImport(c.text, Settings{}, kNow, kZone);
        EXPECT_EQ(plan.calendar, c.calendar);
        EXPECT_EQ(plan.alarms, c.alarms);
        EXPECT_EQ(plan.simplified.size(), c.simplified);
        EXPECT_EQ(plan.unreadable.size(), c.unreadable);
        EXPECT_EQ(plan.past, c.past);
    }
}

// `vendrako exportar-ics`: reads the data folder without touching it, writes the file whole.
TEST(ExportarIcsCommand, WritesTheFileAndLeavesTheDataAlone) {
    test::TempAppFolder folder;
    const std::string ini = "[GENERAL]\r\nNUM_ALARMAS=1\r\n[ALARMAS]\r\nALA_001=20/03/2999 10:00 01 M 07 0 Factura\r\n";
    folder.WriteFile("VendrakoTimer.ini", ini);
    std::ostringstream err;
    EXPECT_EQ(ExportarIcsCommand(folder.Folder(), folder.Path("a.ics"), err), 0);
    EXPECT_NE(folder.ReadFile("a.ics").find("SUMMARY:Factura\r\nRRULE:FREQ=MONTHLY\r\n"), std::string::npos);
    EXPECT_EQ(folder.ReadFile("VendrakoTimer.ini"), ini);
    EXPECT_FALSE(folder.Exists("Backup") || folder.Exists("LOG"));
    EXPECT_EQ(err.str(), "");

    folder.WriteFile("VendrakoTimer.ini", "[GENERAL]\r\nNUM_ALARMAS=2\r\n[ALARMAS]\r\nALA_001=x\r\n");
    EXPECT_EQ(ExportarIcsCommand(folder.Folder(), folder.Path("b.ics"), err), 1);
    EXPECT_NE(err.str().find("El número de alarmas no es el correcto."), std::string::npos);
    EXPECT_EQ(ExportarIcsCommand(folder.Path("nada"), folder.Path("b.ics"), err), 1);
    EXPECT_EQ(ExportarIcsCommand(folder.Folder(), folder.Path("no/hay/carpeta.ics"), err), 1);
    EXPECT_FALSE(folder.Exists("b.ics"));
}

}  // namespace
}  // namespace vt
