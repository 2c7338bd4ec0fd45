#include "store/cp1252.h"

#include <gtest/gtest.h>

#include <string>

namespace vt {
namespace {

std::string AllBytes() {
    std::string bytes;
    for (int b = 0; b < 256; ++b) {
        bytes.push_back(static_cast<char>(b));
    }
    return bytes;
}

TEST(Cp1252, EveryByteSurvivesTheRoundTrip) {
    const std::string bytes = AllBytes();
    const std::string text = Cp1252ToUtf8(bytes);
    EXPECT_EQ(Utf8Length(text), 256u);  // one character per byte, all of it valid UTF-8
    for (size_t pos = 0; pos < text.size(); pos += DecodeUtf8At(text, pos).length) {
        ASSERT_TRUE(DecodeUtf8At(text, pos).valid) << "at " << pos;
    }
    EXPECT_EQ(Utf8ToCp1252(text), bytes);
}

struct ByteCase {
    unsigned char byte;
    const char* utf8;
};

class Cp1252Bytes : public ::testing::TestWithParam<ByteCase> {};

TEST_P(Cp1252Bytes, MapToTheirCharacterAndBack) {
    const std::string byte(1, static_cast<char>(GetParam().byte));
    EXPECT_EQ(Cp1252ToUtf8(byte), GetParam().utf8);
    EXPECT_EQ(Utf8ToCp1252(GetParam().utf8), byte);
}

INSTANTIATE_TEST_SUITE_P(Table, Cp1252Bytes,
                         ::testing::Values(ByteCase{0x41, "A"}, ByteCase{0x80, "\u20AC"},  // euro sign
                                           ByteCase{0x81, "\xC2\x81"},                     // undefined: kept as U+0081
                                           ByteCase{0x8D, "\xC2\x8D"}, ByteCase{0x8F, "\xC2\x8F"},
                                           ByteCase{0x90, "\xC2\x90"}, ByteCase{0x9D, "\xC2\x9D"},
                                           ByteCase{0x85, "\u2026"}, ByteCase{0x92, "\u2019"}, ByteCase{0x9F, "\u0178"},
                                           ByteCase{0xA0, "\u00A0"}, ByteCase{0xD1, "\u00D1"}, ByteCase{0xF3, "\u00F3"},
                                           ByteCase{0xFF, "\u00FF"}));

struct WriteCase {
    const char* name;
    std::string utf8;
    std::string expected;
};

class Utf8Writing : public ::testing::TestWithParam<WriteCase> {};

TEST_P(Utf8Writing, WritesAQuestionMarkForWhatHasNoByte) {
    EXPECT_EQ(Utf8ToCp1252(GetParam().utf8), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Table, Utf8Writing,
                         ::testing::Values(WriteCase{"Spanish", "Reuni\u00F3n a\u00F1o", "Reuni\xF3n a\xF1o"},
                                           WriteCase{"NoByteInTheCodePage", "\u65E5\u672C", "??"},
                                           WriteCase{"FourByteCharacter", "a\U0001F600b", "a?b"},
                                           // U+0080 is a control character; its byte 0x80 is the euro sign.
                                           WriteCase{"ControlWhoseByteIsTaken", "\xC2\x80", "?"},
                                           WriteCase{"StrayContinuation", "a\x80z", "a?z"},
                                           WriteCase{"InvalidLead", "\xFF\xFE", "??"},
                                           WriteCase{"CutAtTheEnd", "ab\xE2\x82", "ab??"},
                                           WriteCase{"Overlong", "\xC0\xAF", "??"},
                                           WriteCase{"OverlongThreeBytes", "\xE0\x80\xAF", "???"},
                                           WriteCase{"Surrogate", "\xED\xA0\x80", "???"},
                                           WriteCase{"BeyondUnicode", "\xF4\x90\x80\x80", "????"},
                                           WriteCase{"BrokenThenValid", "\xC3(\xC3\xB1", "?(\xF1"}),
                         [](const auto& row) { return std::string(row.param.name); });

struct LengthCase {
    std::string text;
    size_t length;
    size_t cut;
    std::string left;
};

class Utf8Counting : public ::testing::TestWithParam<LengthCase> {};

TEST_P(Utf8Counting, CountsAndCutsCharactersNotBytes) {
    EXPECT_EQ(Utf8Length(GetParam().text), GetParam().length);
    EXPECT_EQ(Utf8Left(GetParam().text, GetParam().cut), GetParam().left);
}

INSTANTIATE_TEST_SUITE_P(
    Table, Utf8Counting,
    ::testing::Values(LengthCase{"", 0, 3, ""}, LengthCase{"abc", 3, 0, ""},
                      LengthCase{"Reuni\u00F3n", 7, 6, "Reuni\u00F3"}, LengthCase{"\u00F1\u2026x", 3, 1, "\u00F1"},
                      LengthCase{"\u00F1\u2026x", 3, 2, "\u00F1\u2026"}, LengthCase{"a\U0001F600", 2, 9, "a\U0001F600"},
                      // Each broken byte is one character of its own.
                      LengthCase{"a\xFF\xC3z", 4, 2, "a\xFF"}, LengthCase{"\xE2\x82", 2, 1, "\xE2"}));

}  // namespace
}  // namespace vt
