#include "store/cp1252.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "store/utf8.h"

namespace vt {
namespace {

TEST(Cp1252, EveryByteSurvivesTheRoundTrip) {
    std::string bytes;
    for (int b = 0; b < 256; ++b) {
        bytes.push_back(static_cast<char>(b));
    }
    const std::string text = Cp1252ToUtf8(bytes);
    EXPECT_EQ(Utf8Length(text), 256u);  // one character per byte, all of it valid UTF-8
    for (size_t pos = 0; pos < text.size(); pos += DecodeUtf8At(text, pos).length) {
        ASSERT_TRUE(DecodeUtf8At(text, pos).valid) << "at " << pos;
    }
    EXPECT_EQ(Utf8ToCp1252(text), bytes);
    // The euro sign, an undefined byte kept as its control character, and the last letters.
    EXPECT_EQ(Cp1252ToUtf8("\x80\x81\x9F\xD1\xFF"), "\u20AC\xC2\x81\u0178\u00D1\u00FF");
}

// U+0080 is a control character; its byte 0x80 is the euro sign.
TEST(Utf8Writing, WritesAQuestionMarkForWhatHasNoByte) {
    const std::vector<std::tuple<const char*, std::string, std::string>> cases{
        {"Spanish", "Reuni\u00F3n a\u00F1o", "Reuni\xF3n a\xF1o"},
        {"FourByteCharacter", "a\U0001F600b", "a?b"},
        {"ControlWhoseByteIsTaken", "\xC2\x80", "?"},
        {"BeyondUnicode", "\xF4\x90\x80\x80", "????"},
        {"BrokenThenValid", "\xC3(\xC3\xB1", "?(\xF1"}};
    for (const auto& [name, utf8, expected] : cases) {
        EXPECT_EQ(Utf8ToCp1252(utf8), expected) << name;
        // What would be written as "?" is what the editors refuse.
        EXPECT_EQ(CharactersOutsideCp1252(utf8).empty(), expected.find('?') == std::string::npos) << name;
    }
    // Each once, in order; a typed "?" fits, a broken byte is shown as the replacement character.
    EXPECT_EQ(CharactersOutsideCp1252("\u00BFa? \U0001F600\u65E5\U0001F600 \xC3("), "\U0001F600\u65E5\uFFFD");
}

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

TEST(Utf8, CountsAndCutsCharactersNotBytesAndEachBrokenByteIsOne) {
    EXPECT_EQ(Utf8Length("\u00F1\u2026x"), 3u);
    EXPECT_EQ(Utf8Left("\u00F1\u2026x", 2), "\u00F1\u2026");
    EXPECT_EQ(Utf8Length("a\xFF\xC3z"), 4u);
    EXPECT_EQ(Utf8Left("a\xFF\xC3z", 2), "a\xFF");
}

}  // namespace
}  // namespace vt
