// "Crear calendario" and "Listado por fechas" as App runs them from the menu.
#include <gtest/gtest.h>

#include "../accesslog/accesslog_fakes.h"
#include "app_harness.h"

namespace vt {
namespace {

class ReportsAppTest : public ::testing::Test, public test::AppHarness {
protected:
    ReportsAppTest() {
        clock.Set(13, 3, 2024, 9, 0);
        folder.WriteFile("VendrakoTimer.ini",
                         "[GENERAL]\r\nFECHA=13-03-24\r\nNUM_ALARMAS=1\r\n"
                         "[ALARMAS]\r\nALA_001=20/03/2024 10:00 01 M 07 1 Factura\r\n");
        shell_open = &shell;
        EXPECT_EQ(Start(), Outcome::Continue);
        dialogs.Forget();
    }

    test::RecordingShellOpen shell;
};

TEST_F(ReportsAppTest, CreatingCalendarsWritesTheMonthsPagesUnderTheHourglass) {
    dialogs.QueueInput("010324");
    dialogs.QueueInput("300424");
    dialogs.QueueInput("C");
    view.busy_pointer.clear();
    app->CreateCalendars();
    EXPECT_TRUE(folder.Exists("calendario.03.2024.htm"));
    EXPECT_TRUE(folder.Exists("calendario.04.2024.htm"));
    EXPECT_EQ(view.busy_pointer, (std::vector<bool>{true, false}));
    EXPECT_EQ(dialogs.Texts(), std::vector<std::string>{"Hecho!. Los calendarios están junto al ejecutable."});
    EXPECT_TRUE(app->State().ClockInBoxesActive);
}

TEST_F(ReportsAppTest, TheListingIsWrittenBesideTheProgramAndOpened) {
    dialogs.QueueInput("010324");
    dialogs.QueueInput("310324");
    app->ListDates();
    ASSERT_TRUE(folder.Exists("Listado.txt"));
    EXPECT_NE(folder.ReadFile("Listado.txt").find("Factura"), std::string::npos);
    EXPECT_EQ(shell.opened, std::vector<std::string>{folder.Path("Listado.txt") + " | " + folder.Folder()});
}

TEST_F(ReportsAppTest, ACancelledRangeWritesNothing) {
    app->CreateCalendars();
    app->ListDates();
    EXPECT_FALSE(folder.Exists("calendario.03.2024.htm"));
    EXPECT_FALSE(folder.Exists("Listado.txt"));
    EXPECT_TRUE(dialogs.Shown().empty());
    EXPECT_TRUE(shell.opened.empty());
}

}  // namespace
}  // namespace vt
