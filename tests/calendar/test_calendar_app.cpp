// The month calendar and the proximity report as App runs them in the main window.
#include <gtest/gtest.h>

#include "app_harness.h"

namespace vt {
namespace {

using Lines = std::vector<std::string>;

class CalendarAppTest : public ::testing::Test, public test::AppHarness {
protected:
    CalendarAppTest() {
        clock.Set(13, 3, 2024, 9, 0);  // Wednesday; cell 0 of today's view is Monday 11 March
        folder.WriteFile("VendrakoTimer.ini",
                         "[GENERAL]\r\nFECHA=13-03-24\r\nENTRADA1=08:00\r\nNUM_ALARMAS=2\r\n"
                         "[REPETICIONES]\r\nREP_001=15/03/2024 09:00 Llamar a Ana\r\n"
                         "[ALARMAS]\r\nALA_001=13/03/2024 18:00 07 D 00 0 Gimnasio\r\n"
                         "ALA_002=15/03/2024 10:00 01 M 07 1 Factura\r\n");
        EXPECT_EQ(Start(), Outcome::Continue);
    }
};

TEST_F(CalendarAppTest, StartUpDrawsTodaysMonthCompactAndShowsTheReport) {
    EXPECT_EQ(view.grid.start, MakeDate(11, 3, 2024));
    EXPECT_TRUE(view.grid.cells[4].bold);
    // Today's weekly alarm became a reminder for today and moved on a week before the grid
    // and the report were made.
    EXPECT_TRUE(view.grid.cells[2].underline);
    EXPECT_FALSE(view.grid.cells[2].bold);
    EXPECT_TRUE(view.grid.cells[9].bold);
    EXPECT_FALSE(view.details_visible);
    ASSERT_EQ(dialogs.Texts(), Lines{"Pasado mañana:\r\n- Factura\r\n"});
    EXPECT_EQ(dialogs.Shown()[0].icon, MsgIcon::Information);
    EXPECT_EQ(dialogs.Shown()[0].title, "");
}

TEST_F(CalendarAppTest, TheClosingPathScansBacksUpAndShowsTheReportLast) {
    int scans = 0;
    app->SetScanHook([&] { ++scans; });
    dialogs.Forget();
    folder.WriteFile("LOG/TAREAS.LOG", "x\r\n");
    app->Shutdown(true);
    EXPECT_EQ(scans, 1);
    EXPECT_TRUE(folder.Exists("Backup/TAREAS.LOG"));
    EXPECT_EQ(dialogs.Texts(), Lines{"Pasado mañana:\r\n- Factura\r\n"});
}

TEST_F(CalendarAppTest, HoveringShowsADaysTextsAndAnEmptyDayHidesThem) {
    app->HoverDay(4);  // Friday 15 March
    EXPECT_TRUE(view.details_visible);
    EXPECT_EQ(view.details, "Llamar a Ana // Factura // ");
    app->HoverDay(5);
    EXPECT_FALSE(view.details_visible);
}

TEST_F(CalendarAppTest, AClickOffersTheDaysEntriesAndOpensTheChosenOne) {
    view.day_menu_choice = DayMenuChoice{DayMenuChoice::Kind::Detail, 2};
    app->HoverDay(4);  // the click must hide the texts the hover showed
    app->ClickDay(4);
    ASSERT_EQ(view.day_menus.size(), 1u);
    const DayMenu& menu = view.day_menus[0];
    EXPECT_EQ(menu.date_caption, "15/03/2024");
    EXPECT_EQ(menu.rows,
              (std::vector<DayMenuRow>{{"ALA", 1, "[ALA] Factura"}, {"REP", 2, "[REP] 09:00 Llamar a Ana"}}));
    ASSERT_EQ(view.repetition_forms.size(), 1u) << "row 2 is the repetition";
    EXPECT_EQ(view.repetition_forms[0].texto, "Llamar a Ana");
    EXPECT_FALSE(view.details_visible);
}

}  // namespace
}  // namespace vt
