#include "extras/help_texts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace vt {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

TEST(HelpTopics, EachTextCoversItsTopic) {
    EXPECT_THAT(TextoAyuda("ALA"),
                AllOf(HasSubstr("\"-\" por delante"), HasSubstr("<ddmmyy>"), HasSubstr("Boda (27) en 2025")));
    EXPECT_THAT(TextoAyuda("REP"), AllOf(HasSubstr("(Sin mensaje)"), HasSubstr("5, 10, 15 o 30 minutos")));
}

// The codes are exact: another case or a blank around them is another topic.
TEST(HelpTopics, OnlyTheExactCodesHaveAText) {
    for (const char* code : {"", "ala", " REP", "CAL"}) {
        EXPECT_EQ(TextoAyuda(code), "") << code;
    }
}

// The texts exist in mode 1 only, the default; every other mode has none, for every topic.
TEST(HelpTopics, OnlyModeOneHasATextAndItIsTheDefault) {
    for (const char* code : {"ALA", "REP"}) {
        EXPECT_EQ(TextoAyuda(code, 1), TextoAyuda(code)) << code;
        EXPECT_EQ(TextoAyuda(code, 0) + TextoAyuda(code, 2), "") << code;
    }
    EXPECT_EQ(TextoAyuda("XYZ", 2), "");
}

}  // namespace
}  // namespace vt
