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

}  // namespace
}  // namespace vt
