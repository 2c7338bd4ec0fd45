#include "extras/help_texts.h"

#include <gtest/gtest.h>

#include <string>

namespace vt {
namespace {

struct MentionCase {
    const char* topic;
    const char* words;
};

class HelpMentions : public ::testing::TestWithParam<MentionCase> {};

TEST_P(HelpMentions, CoversItsTopic) {
    EXPECT_NE(TextoAyuda(GetParam().topic).find(GetParam().words), std::string::npos) << GetParam().words;
}

INSTANTIATE_TEST_SUITE_P(Topics, HelpMentions,
                         ::testing::Values(MentionCase{"ALA", "\"-\" por delante"}, MentionCase{"ALA", "<ddmmyy>"},
                                           MentionCase{"ALA", "Boda (27) en 2025"}, MentionCase{"REP", "(Sin mensaje)"},
                                           MentionCase{"REP", "5, 10, 15 o 30 minutos"}));

// The codes are exact: another case or a blank around them is another topic.
TEST(HelpTopics, OnlyTheExactCodesHaveAText) {
    for (const char* code : {"", "ala", " REP", "CAL"}) {
        EXPECT_EQ(TextoAyuda(code), "") << code;
    }
}

// The texts exist in mode 1 only; every other mode has none, for every topic.
TEST(HelpTopics, OnlyModeOneHasATextAndItIsTheDefault) {
    for (const char* code : {"ALA", "REP"}) {
        EXPECT_EQ(TextoAyuda(code, 1), TextoAyuda(code)) << code;
        EXPECT_FALSE(TextoAyuda(code, 1).empty()) << code;
        for (const int mode : {0, 2}) {
            EXPECT_EQ(TextoAyuda(code, mode), "") << code << " mode " << mode;
        }
    }
    EXPECT_EQ(TextoAyuda("XYZ", 2), "");
}

}  // namespace
}  // namespace vt
