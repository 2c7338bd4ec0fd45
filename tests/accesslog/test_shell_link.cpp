#include "accesslog/shell_link.h"

#include <gtest/gtest.h>

#include <string>

#include "lnk_builder.h"

namespace vt {
namespace {

using test::BuildLnk;
using test::LnkParts;

struct LinkCase {
    const char* name;
    LnkParts parts;
    std::string target;
};

class ShellLinkTarget : public ::testing::TestWithParam<LinkCase> {};

TEST_P(ShellLinkTarget, IsTheLocalBasePath) {
    EXPECT_EQ(ReadShellLinkTarget(BuildLnk(GetParam().parts)), GetParam().target);
}

INSTANTIATE_TEST_SUITE_P(
    Table, ShellLinkTarget,
    ::testing::Values(
        LinkCase{"WithTargetIdList", LnkParts{}, "C:\\Users\\Ana\\informe.docx"},
        LinkCase{"WithoutTargetIdList", LnkParts{.id_list = false, .unicode_base = {}}, "C:\\Users\\Ana\\informe.docx"},
        LinkCase{"UnicodeStringsWin",
                 LnkParts{.base = "C:\\????.txt", .unicode_base = u"C:\\\u65E5\u672C\U0001F600.txt"}, "C:\\日本😀.txt"}),
    [](const auto& row) { return std::string(row.param.name); });

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
