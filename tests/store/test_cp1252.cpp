#include "store/cp1252.h"

#include <gtest/gtest.h>

#include <string>

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

}  // namespace
}  // namespace vt
