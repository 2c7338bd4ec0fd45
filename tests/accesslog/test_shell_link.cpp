#include "accesslog/shell_link.h"

#include <gtest/gtest.h>

#include <string>

#include "lnk_builder.h"

namespace vt {
namespace {

using test::BuildLnk;
using test::LnkParts;

TEST(ShellLinkTarget, IsTheLocalBasePath) {
    EXPECT_EQ(ReadShellLinkTarget(BuildLnk(LnkParts{})), "C:\\Users\\Ana\\informe.docx");
    EXPECT_EQ(ReadShellLinkTarget(BuildLnk(LnkParts{.id_list = false, .unicode_base = {}})),
              "C:\\Users\\Ana\\informe.docx");
    // The Unicode strings win over the ANSI ones.
    EXPECT_EQ(ReadShellLinkTarget(
                  BuildLnk(LnkParts{.base = "C:\\????.txt", .unicode_base = u"C:\\\u65E5\u672C\U0001F600.txt"})),
              "C:\\日本😀.txt");
}

// Cut short anywhere before the link information ends, a shortcut gives no target; never a crash.
TEST(ShellLinkTargetDamaged, CutAtEveryLength) {
    const std::string lnk = BuildLnk(LnkParts{});
    const std::size_t complete = lnk.size() - 4;  // without the terminal block
    for (std::size_t n = 0; n < lnk.size(); ++n) {
        EXPECT_EQ(ReadShellLinkTarget(lnk.substr(0, n)), n >= complete ? LnkParts{}.base : "") << n;
    }
}

}  // namespace
}  // namespace vt
