#include "store/cp1252.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "store/utf8.h"

namespace vt {
namespace {

// Both decoders and both encoders at the edges of each sequence length; an overlong form or a
// surrogate is no character (code 0 below): one "?" per byte, one U+FFFD for the sequence.
TEST(Utf8, BoundariesOfEachLengthAndOverlongForms) {
    // clang-format off
    const std::vector<std::pair<std::string, char32_t>> cases{
        {"\xDF\xBF", 0x7FF}, {"\xE0\xA0\x80", 0x800}, {"\xEF\xBF\xBF", 0xFFFF}, {"\xF0\x90\x80\x80", 0x10000},
        {"\xF4\x8F\xBF\xBF", 0x10FFFF}, {"\xC0\xAF", 0}, {"\xE0\x9F\xBF", 0}, {"\xF0\x8F\xBF\xBF", 0},
        {"\xF0\x82\x82\xAC", 0}, {"\xED\xA0\x80", 0}};
    // clang-format on
    for (const auto& [bytes, code] : cases) {
        SCOPED_TRACE(::testing::PrintToString(bytes));
        EXPECT_EQ(Utf8ToUtf32(bytes), std::u32string(1, code != 0 ? code : U'\uFFFD'));
        if (code != 0) {
            const Utf8Char ch = DecodeUtf8At(bytes, 0);
            EXPECT_EQ(std::tuple(ch.valid, ch.code, ch.length), std::tuple(true, code, bytes.size()));
            EXPECT_EQ(Utf32ToUtf8(std::u32string(1, code)), bytes);
            EXPECT_EQ(CharactersOutsideCp1252(bytes), bytes);  // the other encoder writes it back
        } else {
            EXPECT_EQ(Utf8ToCp1252(bytes), std::string(bytes.size(), '?'));
        }
    }
}

TEST(Utf8, MalformedBytesBecomeReplacementCharacters) {
    EXPECT_EQ(Utf8ToUtf32(std::string("a\xFF") + "b\xC3"), U"a\uFFFDb\uFFFD");
    EXPECT_EQ(Utf8ToUtf32("\xE2\x82x"), U"\uFFFDx");
    EXPECT_EQ(Utf32ToUtf8(Utf8ToUtf32("Año € 😀")), "Año € 😀");
}

}  // namespace
}  // namespace vt
