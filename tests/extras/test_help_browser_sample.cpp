// Writes the help page and a month calendar page that the browser check
// (tests/e2e/browser_pages.sh) opens in a real browser; on their own they check that each page
// holds what the browser check then looks at.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "calendar/html_calendar.h"
#include "extras/help_page.h"
#include "store/cp1252.h"
#include "store/dates.h"

namespace vt {
namespace {

TEST(HelpBrowserSample, WritesTheHelpPageTheBrowserCheckOpens) {
    const std::string page = HelpPageText("VendrakoTimer");
    ASSERT_TRUE(page.starts_with("<html><head><title>Ayuda_VendrakoTimer</title></head>\r\n"));
    ASSERT_TRUE(page.ends_with("</td></tr></table></center></div></body></html>\r\n"));
    if (const char* target = std::getenv("VT_HELP_PAGE")) {
        std::ofstream(target, std::ios::binary) << Utf8ToCp1252(page);
    }
}

// March 2024, with a priority entry on Friday 15, a hidden one and one on a Saturday.
TEST(CalendarBrowserSample, WritesTheMonthPageTheBrowserCheckOpens) {
    const std::string page = CalendarPage(
        MakeDate(1, 3, 2024), {"15/03/2024!Entrega <informe>", "15/03/2024-Oculto", "02/03/2024Sábado"}, "C");
    EXPECT_NE(page.find("15</br><div class='cumple'><u><b>Entrega &lt;informe&gt;</b></u></div>"), std::string::npos);
    EXPECT_EQ(page.find("Oculto"), std::string::npos);
    if (const char* target = std::getenv("VT_CALENDAR_PAGE")) {
        std::ofstream(target, std::ios::binary) << Utf8ToCp1252(page);
    }
}

}  // namespace
}  // namespace vt
