#include "accesslog/shell_link.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

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

TEST(ShellLinkTarget, IsTheLocalBasePath) {
    // clang-format off
    const std::vector<std::tuple<const char*, LnkParts, std::string>> cases{
        {"WithTargetIdList", LnkParts{}, "C:\\Users\\Ana\\informe.docx"},
        {"WithoutTargetIdList", With([](LnkParts& s) { s.id_list = false; }), "C:\\Users\\Ana\\informe.docx"},
        {"AnsiIsWindows1252", With([](LnkParts& s) { s.base = "C:\\A\xF1o\\caf\xE9.txt"; }), "C:\\Año\\café.txt"},
        {"SuffixIsAppended", With([](LnkParts& s) { s.base = "C:\\Datos\\"; s.suffix = "actas.pdf"; }), "C:\\Datos\\actas.pdf"},
        {"UnicodeStringsWin", With([](LnkParts& s) { s.base = "C:\\????.txt"; s.unicode_base = u"C:\\\u65E5\u672C\U0001F600.txt"; }), "C:\\日本😀.txt"},
        {"UnpairedSurrogateBecomesReplacement",
         With([](LnkParts& s) { s.unicode_base = std::u16string(u"C:\\x") + char16_t(0xD800) + u"y"; }), "C:\\x\uFFFDy"},
        {"NoLinkInfo", With([](LnkParts& s) { s.link_info = false; }), ""},
        {"NoLocalPath", With([](LnkParts& s) { s.local_path = false; }), ""}};
    // clang-format on
    for (const auto& [name, parts, target] : cases) {
        EXPECT_EQ(ReadShellLinkTarget(BuildLnk(parts)), target) << name;
    }
}

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

TEST(ShellLinkBadField, GivesNoTarget) {
    // The offset counts from the start of the link information (76 with no ID list).
    const std::vector<std::tuple<const char*, std::size_t, std::uint32_t>> cases{
        {"HeaderSize", 0, 0x4D},
        {"Clsid", 4, 0},
        {"InfoLongerThanFile", 76, 0xFFFFFFF0},
        {"InfoHeaderTooShort", 76 + 4, 0x10},
        {"BaseOutsideInfo", 76 + 16, 0x7FFFFFFF},
        {"InfoEndsInsideBase", 76, 60}};
    for (const auto& [name, at, value] : cases) {
        LnkParts parts;
        parts.id_list = false;
        std::string lnk = BuildLnk(parts);
        test::SetU32(lnk, at, value);
        EXPECT_EQ(ReadShellLinkTarget(lnk), "") << name;
    }
}

TEST(ShellLinkTargetDamaged, IdListReachingPastTheEnd) {
    std::string lnk = BuildLnk(LnkParts{});
    lnk[76] = '\xFF';
    lnk[77] = '\xFF';
    EXPECT_EQ(ReadShellLinkTarget(lnk), "");
}

}  // namespace
}  // namespace vt
