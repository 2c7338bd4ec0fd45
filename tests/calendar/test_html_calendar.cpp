#include "calendar/html_calendar.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "agenda/entries.h"
#include "calendar_entries.h"
#include "recording_busy.h"
#include "scripted_dialogs.h"
#include "store/cp1252.h"
#include "store/text_file.h"
#include "temp_app_folder.h"
#include "test_names.h"

namespace vt {
namespace {

using test::ListOf;
using test::RecordingBusy;
using test::ScriptedDialogs;
using test::TempAppFolder;
using Items = std::vector<std::string>;

// A month's whole page, byte for byte: the 31 head lines, six week rows of nine lines each
// (the days of other months greyed, the weekends shaded), then the table, the body and the page
// closed.
TEST(CalendarPage, IsTheMonthByteForByte) {
    EXPECT_EQ(CalendarPage(MakeDate(15, 3, 2024), {}, "C"),
              ReadWholeFile(VT_TEST_DATA "calendar/calendario.03.2024.htm").bytes);
}

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

// A page that cannot be written (a folder stands in its place) is named with its cause instead
// of "Hecho!"; the other months are still written. More failures are counted after the first.
TEST_F(CreateCalendarsTest, APageThatCannotBeWrittenIsNamedInsteadOfDone) {
    for (const auto& [blocked, tail] :
         {std::pair{Items{"calendario.04.2024.htm"}, "."},
          std::pair{Items{"calendario.03.2024.htm", "calendario.05.2024.htm"}, " ni otro más."}}) {
        for (const std::string& page : blocked) {
            folder.WriteFile(page + "/dentro", "");
        }
        dialogs.Forget();
        for (const char* typed : {"010324", "310524", "C"}) {
            dialogs.QueueInput(std::string(typed));
        }
        Run();
        ASSERT_EQ(dialogs.Shown().size(), 1u) << blocked.size();
        EXPECT_EQ(dialogs.Shown()[0].text,
                  "No se ha podido escribir el calendario " + folder.Path(blocked[0]) + " (es una carpeta)" + tail);
        EXPECT_EQ(dialogs.Shown()[0].icon, MsgIcon::Exclamation);
        for (const std::string page : {"calendario.03.2024.htm", "calendario.04.2024.htm", "calendario.05.2024.htm"}) {
            const bool wanted = std::find(blocked.begin(), blocked.end(), page) == blocked.end();
            EXPECT_EQ(std::filesystem::is_regular_file(folder.Path(page)), wanted) << page;
            std::filesystem::remove_all(folder.Path(page));
        }
    }
}

}  // namespace
}  // namespace vt
