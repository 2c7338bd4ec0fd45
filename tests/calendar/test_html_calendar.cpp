#include "calendar/html_calendar.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "agenda/entries.h"
#include "calendar_entries.h"
#include "recording_busy.h"
#include "scripted_dialogs.h"
#include "store/cp1252.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

using test::ListOf;
using test::RecordingBusy;
using test::ScriptedDialogs;
using test::TempAppFolder;
using Items = std::vector<std::string>;

std::vector<std::string> LinesOf(const std::string& page) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    for (std::size_t end = page.find("\r\n"); end != std::string::npos; end = page.find("\r\n", start)) {
        lines.push_back(page.substr(start, end - start));
        start = end + 2;
    }
    EXPECT_EQ(start, page.size()) << "the page ends without CR LF";
    return lines;
}

// The cell lines of a page, in order (42 of them).
std::vector<std::string> CellsOf(const std::string& page) {
    std::vector<std::string> cells;
    for (const std::string& line : LinesOf(page)) {
        if (line.rfind("  <td width='14%'", 0) == 0) {
            cells.push_back(line);
        }
    }
    return cells;
}

const std::string kCell = "  <td width='14%' align='left' valign='top' height='16%'";

TEST(CalendarPage, HeadLinesInOrder) {
    const std::vector<std::string> lines = LinesOf(CalendarPage(MakeDate(15, 3, 2024), {}, "C"));
    ASSERT_EQ(lines.size(), 31u + 6 * 9 + 3);
    const std::vector<std::string> head(lines.begin(), lines.begin() + 31);
    const std::vector<std::string> expected{
        "<html>",
        "<head>",
        "<meta http-equiv='Content-Language' content='es'>",
        "<meta http-equiv='Content-Type' content='text/html; charset=windows-1252'>",
        "<title>MARZO.2024</title>",
        "<style type='text/css'>",
        "table {",
        " font-family: arial; ",
        " font-size: 40pt;",
        " font-weight: bold;",
        " color: #000000;",
        "}",
        ".otromes {",
        " color: #aaaaaa;",
        " font-size: 40pt;",
        "}",
        ".mes {",
        " font-size: 20pt;",
        "}",
        ".cumple {",
        " color: #000000;",
        " font-size: 9pt;",
        " font-weight: normal;",
        "}",
        "</style>",
        "</head>",
        "<body topmargin='10' leftmargin='10'>",
        "<table border='1' width='100%' cellspacing='0' cellpadding='0' bordercolorlight='#000000' "
        "bordercolordark='#FFFFFF' bordercolor='#FFFFFF' height='100%'>",
        " <tr>",
        "  <td width='100%' align='center' valign='top' colspan='7' class='mes'>MARZO.2024</td>",
        " </tr>"};
    // 31 head lines, then the first week row opens.
    EXPECT_EQ(head, expected);
    EXPECT_EQ(lines[31], " <tr>");
    EXPECT_EQ(std::vector<std::string>(lines.end() - 3, lines.end()),
              (std::vector<std::string>{"</table>", "</body>", "</html>"}));
}

// One cell of a page: the month shown, the page's items, and the cell's whole line.
struct CellCase {
    const char* what;
    Date month;
    Items items;
    std::size_t cell;
    std::string expected;
};

class CalendarCell : public ::testing::TestWithParam<CellCase> {};

TEST_P(CalendarCell, Line) {
    const CellCase& c = GetParam();
    const std::vector<std::string> cells = CellsOf(CalendarPage(c.month, c.items, "C"));
    ASSERT_EQ(cells.size(), 42u);
    EXPECT_EQ(cells[c.cell], c.expected) << c.what;
}

// April 2024 begins on a Monday; March 2024 on a Friday, so 5 March is cell 8.
INSTANTIATE_TEST_SUITE_P(
    Cells, CalendarCell,
    ::testing::Values(CellCase{"1st on a Monday starts the grid", MakeDate(10, 4, 2024), {}, 0, kCell + ">01</td>"},
                      CellCase{"other-month weekend: colour, then class",
                               MakeDate(1, 9, 2024),
                               {},
                               5,
                               kCell + " bgcolor='#C0C0C0' class='otromes'>31</td>"},
                      CellCase{"priority underlined and bold, in list order",
                               MakeDate(1, 3, 2024),
                               {"05/03/2024!Pago", "06/03/2024Otro día", "05/03/2024A"},
                               8,
                               kCell + ">05</br><div class='cumple'><u><b>Pago</b></u></br>A</div></td>"},
                      CellCase{"text escaped",
                               MakeDate(1, 3, 2024),
                               {"05/03/2024A&B <ddmmyy> l'o"},
                               8,
                               kCell + ">05</br><div class='cumple'>A&amp;B &lt;ddmmyy&gt; l'o</div></td>"}));

// The menu action, from the boxes to the files.
class CreateCalendarsTest : public ::testing::Test {
protected:
    void Run() { CreateCalendars(dialogs, busy, folder.Folder(), MakeDate(11, 3, 2024), alarms, repetitions); }
    std::vector<std::string> Pages() const {
        std::vector<std::string> found;
        for (int year = 2023; year <= 2026; ++year) {
            for (unsigned month = 1; month <= 12; ++month) {
                const std::string name = CalendarFileName(MakeDate(1, static_cast<int>(month), year));
                if (folder.Exists(name)) {
                    found.push_back(name);
                }
            }
        }
        return found;
    }
    ScriptedDialogs dialogs;
    RecordingBusy busy;
    TempAppFolder folder;
    EntryList alarms;
    EntryList repetitions;
};

// What the user types in the boxes, the pages written and the messages shown.
struct Session {
    const char* what;
    std::vector<std::optional<std::string>> typed;
    Items pages;
    Items messages;
};

class CreateCalendarsSession : public CreateCalendarsTest, public ::testing::WithParamInterface<Session> {};

TEST_P(CreateCalendarsSession, WritesTheMonthsOfTheRange) {
    for (const auto& typed : GetParam().typed) {
        dialogs.QueueInput(typed);
    }
    Run();
    EXPECT_EQ(Pages(), GetParam().pages);
    EXPECT_EQ(dialogs.Texts(), GetParam().messages);
    EXPECT_EQ(busy.calls, (std::vector<bool>{true, false}));
}

INSTANTIATE_TEST_SUITE_P(Boxes, CreateCalendarsSession,
                         ::testing::Values(Session{"inside one month",
                                                   {"050324", "200324", "C"},
                                                   {"calendario.03.2024.htm"},
                                                   {kCalendarsDoneMessage}},
                                           Session{"cancelled", {"050324", std::nullopt}, {}, {}},
                                           Session{"end before start asked again",
                                                   {"050324", "010224", "050424", "C"},
                                                   {"calendario.03.2024.htm", "calendario.04.2024.htm"},
                                                   {kEndBeforeStartMessage, kCalendarsDoneMessage}}));

TEST_F(CreateCalendarsTest, FourMonthsWriteFourPagesInWindows1252) {
    alarms = ListOf({BuildAlarmEntry("20/11/2024", "09:00", 1, "M", 7, "1", "Revisión año")});
    dialogs.QueueInput("151124");
    dialogs.QueueInput("100225");
    dialogs.QueueInput("E");
    Run();
    EXPECT_EQ(Pages(), (std::vector<std::string>{"calendario.11.2024.htm", "calendario.12.2024.htm",
                                                 "calendario.01.2025.htm", "calendario.02.2025.htm"}));
    const std::string bytes = folder.ReadFile("calendario.02.2025.htm");
    EXPECT_NE(bytes.find(">20</br><div class='cumple'><u><b>Revisi\xF3n a\xF1o</b></u></div></td>"), std::string::npos);
    EXPECT_EQ(bytes, Utf8ToCp1252(CalendarPage(MakeDate(1, 2, 2025), {"20/02/2025!Revisión año"}, "E")));
}

// A lower-case "e" is not Basque; and an entry marked "-" never reaches a page.
TEST_F(CreateCalendarsTest, LowerCaseEGivesSpanishAndHiddenEntriesStayOff) {
    alarms = ListOf({BuildAlarmEntry("05/03/2024", "09:00", 0, "D", 14, "0", "-Secreto")});
    repetitions = ListOf({BuildRepetitionEntry("06/03/2024", "10:00", "-Otro secreto")});
    dialogs.QueueInput("050324");
    dialogs.QueueInput("050324");
    dialogs.QueueInput("e");
    Run();
    const std::string bytes = folder.ReadFile("calendario.03.2024.htm");
    EXPECT_NE(bytes.find("<title>MARZO.2024</title>"), std::string::npos);
    EXPECT_EQ(bytes.find("ecreto"), std::string::npos);
    EXPECT_EQ(dialogs.Asked().back().prompt, "Idioma (C/E):");
}

}  // namespace
}  // namespace vt

namespace vt {
namespace {

// The page the browser check (tests/e2e/calendar_chromium.sh) opens: March 2024, with a
// priority entry on Friday 15 and a hidden one. Written where VT_BROWSER_PAGE points, if set.
TEST(BrowserSample, WritesThePageTheBrowserCheckOpens) {
    const Items items{"15/03/2024!Entrega <informe>", "15/03/2024-Oculto", "02/03/2024Sábado"};
    const std::string page = Utf8ToCp1252(CalendarPage(MakeDate(1, 3, 2024), items, "C"));
    EXPECT_NE(page.find("height='16%'>15</br><div class='cumple'><u><b>Entrega &lt;informe&gt;</b></u></div>"),
              std::string::npos);
    EXPECT_EQ(page.find("Oculto"), std::string::npos);
    if (const char* path = std::getenv("VT_BROWSER_PAGE")) {
        std::ofstream(path, std::ios::binary) << page;
    }
}

}  // namespace
}  // namespace vt
