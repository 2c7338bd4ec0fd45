#include "calendar/date_listing.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "agenda/entries.h"
#include "calendar_entries.h"
#include "platform/shell_open.h"
#include "scripted_dialogs.h"
#include "temp_app_folder.h"

namespace vt {
namespace {

using test::ListOf;
using test::ScriptedDialogs;
using test::TempAppFolder;

class RecordingShellOpen : public ShellOpen {
public:
    bool Open(const std::string& target, const std::string& working_folder) override {
        opened.push_back({target, working_folder});
        return true;
    }
    std::vector<std::pair<std::string, std::string>> opened;
};

struct ListingCase {
    const char* what;
    std::vector<std::string> items;
    std::string expected;
};

class DateListing : public ::testing::TestWithParam<ListingCase> {};

TEST_P(DateListing, Text) {
    const ListingCase& c = GetParam();
    const CollectedRange collected{{MakeDate(1, 3, 2024), MakeDate(31, 3, 2024)}, c.items};
    EXPECT_EQ(DateListingText(collected), c.expected) << c.what;
}

INSTANTIATE_TEST_SUITE_P(
    Items, DateListing,
    ::testing::Values(ListingCase{"empty range", {}, "Listado del 01/03/2024 al 31/03/2024\r\n"},
                      ListingCase{
                          "one day, two items",
                          {"05/03/2024Uno", "05/03/2024!Dos"},
                          "Listado del 01/03/2024 al 31/03/2024\r\n\r\nMartes 05/03/2024\r\n  Uno\r\n! Dos\r\n"},
                      ListingCase{"two days",
                                  {"05/03/2024Uno", "09/03/2024Dos"},
                                  "Listado del 01/03/2024 al 31/03/2024\r\n\r\nMartes 05/03/2024\r\n  Uno\r\n"
                                  "\r\nSábado 09/03/2024\r\n  Dos\r\n"},
                      ListingCase{"hidden entries are listed",
                                  {"05/03/2024-Oculto"},
                                  "Listado del 01/03/2024 al 31/03/2024\r\n\r\nMartes 05/03/2024\r\n  -Oculto\r\n"},
                      ListingCase{"anniversary for the item's year",
                                  {"05/03/2024Boda (2000)"},
                                  "Listado del 01/03/2024 al 31/03/2024\r\n\r\nMartes 05/03/2024\r\n  Boda (24)\r\n"}));

class ListDatesTest : public ::testing::Test {
protected:
    void Run() { ListDates(dialogs, shell, folder.Folder(), MakeDate(11, 3, 2024), alarms, repetitions); }
    ScriptedDialogs dialogs;
    RecordingShellOpen shell;
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
    ASSERT_EQ(shell.opened.size(), 1u);
    EXPECT_EQ(shell.opened[0].first, folder.Path(kListingFileName));
    EXPECT_TRUE(dialogs.Shown().empty());
}

TEST_F(ListDatesTest, CancelWritesNothingOpensNothing) {
    dialogs.QueueInput(std::nullopt);
    Run();
    EXPECT_FALSE(folder.Exists(kListingFileName));
    EXPECT_TRUE(shell.opened.empty());
    EXPECT_TRUE(dialogs.Shown().empty());
}

TEST_F(ListDatesTest, EndBeforeStartRefusedThenAskedAgain) {
    dialogs.QueueInput("150325");
    dialogs.QueueInput("010325");
    dialogs.QueueInput("150325");
    Run();
    EXPECT_EQ(dialogs.Texts(), (std::vector<std::string>{kEndBeforeStartMessage}));
    EXPECT_EQ(folder.ReadFile(kListingFileName), "Listado del 01/03/2025 al 31/03/2025\r\n");
}

}  // namespace
}  // namespace vt
