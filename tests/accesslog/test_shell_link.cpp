#include "accesslog/shell_link.h"

#include <gtest/gtest.h>

#include <string>

#include "lnk_builder.h"

namespace vt {
namespace {

using test::BuildLnk;
using test::LnkParts;

LnkParts With(void (*change)(LnkParts&)) {
    LnkParts parts;
    change(parts);
    return parts;
}

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
    ::testing::Values(LinkCase{"WithTargetIdList", LnkParts{}, "C:\\Users\\Ana\\informe.docx"},
                      LinkCase{"WithoutTargetIdList", With([](LnkParts& s) { s.id_list = false; }),
                               "C:\\Users\\Ana\\informe.docx"},
                      LinkCase{"AnsiIsWindows1252", With([](LnkParts& s) { s.base = "C:\\A\xF1o\\caf\xE9.txt"; }),
                               "C:\\Año\\café.txt"},
                      LinkCase{"SuffixIsAppended", With([](LnkParts& s) {
                                   s.base = "C:\\Datos\\";
                                   s.suffix = "actas.pdf";
                               }),
                               "C:\\Datos\\actas.pdf"},
                      LinkCase{"UnicodeStringsWin", With([](LnkParts& s) {
                                   s.base = "C:\\????.txt";
                                   s.unicode_base = u"C:\\\u65E5\u672C\U0001F600.txt";
                               }),
                               "C:\\日本😀.txt"},
                      LinkCase{"UnpairedSurrogateBecomesReplacement", With([](LnkParts& s) {
                                   s.unicode_base = std::u16string(u"C:\\x") + char16_t(0xD800) + u"y";
                               }),
                               "C:\\x\uFFFDy"},
                      LinkCase{"NoLinkInfo", With([](LnkParts& s) { s.link_info = false; }), ""},
                      LinkCase{"NoLocalPath", With([](LnkParts& s) { s.local_path = false; }), ""}),
    [](const auto& row) { return std::string(row.param.name); });

// A shortcut cut short anywhere gives no target (the link information is bounded by its own
// size), or the whole one once the link information is complete; never a crash.
TEST(ShellLinkTargetDamaged, CutAtEveryLength) {
    for (const bool id_list : {true, false}) {
        LnkParts parts;
        parts.id_list = id_list;
        const std::string lnk = BuildLnk(parts);
        const std::size_t complete = lnk.size() - 4;  // without the terminal block
        for (std::size_t n = 0; n < lnk.size(); ++n) {
            EXPECT_EQ(ReadShellLinkTarget(lnk.substr(0, n)), n >= complete ? parts.base : "") << n;
        }
    }
}

struct DamageCase {
    const char* name;
    std::size_t at;  // offset from the start of the link information (76 with no ID list)
    std::uint32_t value;
};

class ShellLinkBadField : public ::testing::TestWithParam<DamageCase> {};

TEST_P(ShellLinkBadField, GivesNoTarget) {
    LnkParts parts;
    parts.id_list = false;
    std::string lnk = BuildLnk(parts);
    test::SetU32(lnk, GetParam().at, GetParam().value);
    EXPECT_EQ(ReadShellLinkTarget(lnk), "");
}

INSTANTIATE_TEST_SUITE_P(Table, ShellLinkBadField,
                         ::testing::Values(DamageCase{"HeaderSize", 0, 0x4D}, DamageCase{"Clsid", 4, 0},
                                           DamageCase{"InfoLongerThanFile", 76, 0xFFFFFFF0},
                                           DamageCase{"InfoHeaderTooShort", 76 + 4, 0x10},
                                           DamageCase{"BaseOutsideInfo", 76 + 16, 0x7FFFFFFF},
                                           DamageCase{"InfoEndsInsideBase", 76, 60}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ShellLinkTargetDamaged, IdListReachingPastTheEnd) {
    std::string lnk = BuildLnk(LnkParts{});
    lnk[76] = '\xFF';
    lnk[77] = '\xFF';
    EXPECT_EQ(ReadShellLinkTarget(lnk), "");
}

}  // namespace
}  // namespace vt
