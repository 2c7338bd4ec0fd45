#include <gtest/gtest.h>

#include <regex>
#include <sstream>

#include "agenda/entries.h"
#include "ical/exportar_ics_command.h"
#include "ical/ics_export.h"
#include "ical/ics_import.h"
#include "store/text_file.h"
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

// Files as other programs write them, and files that are no calendar at all: the cases are
// in a data file, each with the plan its import must give.
TEST(IcsImport, TakesWhatItCanAndSaysWhatItCannot) {
    std::istringstream cases(ReadWholeFile(VT_TEST_DATA "ical/import_cases.txt").bytes);
    std::string line;
    std::getline(cases, line, '=');  // the explanation before the first case
    while (std::getline(cases, line) && line.starts_with("== ")) {
        std::istringstream header(line.substr(3));
        std::string name;
        int calendar = 0;
        std::size_t simplified = 0;
        std::size_t unreadable = 0;
        int past = 0;
        header >> name >> calendar >> simplified >> unreadable >> past;
        SCOPED_TRACE(name);
        std::vector<std::string> alarms;
        std::string text;
        while (cases.peek() != '=' && std::getline(cases, line)) {
            if (line.starts_with("+ ")) {
                alarms.push_back(line.substr(2));
            } else {
                text += line.ends_with('\\') ? line.substr(0, line.size() - 1) : line + "\r\n";
            }
        }
        cases.ignore(1);  // the first "=" of the next case
        const IcsImportPlan plan = PlanIcsImport(text, Settings{}, kNow, kZone);
        EXPECT_EQ(plan.calendar, calendar == 1);
        EXPECT_EQ(plan.alarms, alarms);
        EXPECT_EQ(plan.simplified.size(), simplified);
        EXPECT_EQ(plan.unreadable.size(), unreadable);
        EXPECT_EQ(plan.past, past);
    }
    EXPECT_TRUE(cases.eof()) << "a case header is malformed";
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
