// Writes the help page that the browser check (tests/e2e/help_chromium.sh) opens in a real
// browser; on its own it checks that the page is framed as a browser needs it.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "extras/help_page.h"
#include "store/cp1252.h"

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

}  // namespace
}  // namespace vt
