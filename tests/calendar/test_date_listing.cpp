#include "calendar/date_listing.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../accesslog/accesslog_fakes.h"
#include "agenda/entries.h"
#include "calendar_entries.h"
#include "scripted_dialogs.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

using test::ListOf;
using test::ScriptedDialogs;
using test::TempAppFolder;

class ListDatesTest : public ::testing::Test {
protected:
    void Run() { ListDates(dialogs, shell, folder.Folder(), MakeDate(11, 3, 2024), alarms, repetitions); }
    ScriptedDialogs dialogs;
    test::RecordingShellOpen shell;
    TempAppFolder folder;
    EntryList alarms;
    EntryList repetitions;
};

TEST_F(ListDatesTest, MonthlyAlarmYearlyAnniversaryAndRepetitionByteForByte) {
    alarms = ListOf({BuildAlarmEntry("20/01/2025", "09:00", 1, "M", 7, "0", "Pagar cuota"),
                     BuildAlarmEntry("03/02/2024", "08:00", 1, "A", 14, "1", "Cumpleaños Ane (1990)")});
    repetitions = ListOf({BuildRepetitionEntry("03/02/2025", "10:30", "Reunión")});
    dialogs.QueueInput("150125");
    dialogs.QueueInput("100225");
    Run();
    const std::string expected =
        "Listado del 01/01/2025 al 28/02/2025\r\n"
        "\r\nLunes 20/01/2025\r\n  Pagar cuota\r\n"
        "\r\nLunes 03/02/2025\r\n  Reuni\xF3n\r\n! Cumplea\xF1os Ane (35)\r\n"
        "\r\nJueves 20/02/2025\r\n  Pagar cuota\r\n";
    EXPECT_EQ(folder.ReadFile(kListingFileName), expected);
    EXPECT_EQ(shell.opened, std::vector<std::string>{folder.Path(kListingFileName) + " | " + folder.Folder()});
    EXPECT_TRUE(dialogs.Shown().empty());
    ASSERT_EQ(dialogs.Asked().size(), 2u);
    EXPECT_EQ(dialogs.Asked()[0].title + "|" + dialogs.Asked()[1].title, "Listado por fechas|Listado por fechas");
}

}  // namespace
}  // namespace vt
