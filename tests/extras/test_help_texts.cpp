#include "extras/help_texts.h"

#include <gtest/gtest.h>

#include <string>

#include "agenda/alarm_editor.h"

namespace vt {
namespace {

class HelpText : public ::testing::TestWithParam<const char*> {};

// One paragraph a line: every break is "\r\n", none is doubled or left at either end, and no
// line holds a stray "\r" or "\n" of its own or starts or ends with a blank.
TEST_P(HelpText, IsParagraphsJoinedByCrLf) {
    const std::string text = TextoAyuda(GetParam());
    int lines = 0;
    for (size_t start = 0, end = 0; end != std::string::npos; start = end + 2, ++lines) {
        end = text.find("\r\n", start);
        const std::string line = text.substr(start, end == std::string::npos ? end : end - start);
        ASSERT_FALSE(line.empty()) << "line " << lines;
        EXPECT_EQ(line.find_first_of("\r\n"), std::string::npos) << line;
        EXPECT_NE(line.front(), ' ') << line;
        EXPECT_NE(line.back(), ' ') << line;
    }
    EXPECT_GT(lines, 3);
}

INSTANTIATE_TEST_SUITE_P(Topics, HelpText, ::testing::Values("ALA", "REP"));

struct MentionCase {
    const char* topic;
    const char* words;
};

class HelpMentions : public ::testing::TestWithParam<MentionCase> {};

TEST_P(HelpMentions, CoversItsTopic) {
    EXPECT_NE(TextoAyuda(GetParam().topic).find(GetParam().words), std::string::npos) << GetParam().words;
}

INSTANTIATE_TEST_SUITE_P(
    Topics, HelpMentions,
    ::testing::Values(MentionCase{"ALA", "\"!\" por delante"}, MentionCase{"ALA", "\"-\" por delante"},
                      MentionCase{"ALA", "(9999)"}, MentionCase{"ALA", "<ddmmyy>"},
                      MentionCase{"ALA", "150324 es el 15/03/2024"}, MentionCase{"ALA", "745 son las 07:45"},
                      MentionCase{"ALA", "de lunes a viernes"}, MentionCase{"ALA", "las mensuales 7 días"},
                      MentionCase{"ALA", "las anuales 14 días"}, MentionCase{"ALA", "no se repiten 14 días"},
                      MentionCase{"ALA", "\"REP> \""}, MentionCase{"ALA", "Boda (27) en 2025"},
                      MentionCase{"REP", "una sola vez"}, MentionCase{"REP", "150324 es el 15/03/2024"},
                      MentionCase{"REP", "(Sin mensaje)"}, MentionCase{"REP", "interrogación"},
                      MentionCase{"REP", "5, 10, 15 o 30 minutos"}, MentionCase{"REP", "1 semana"},
                      MentionCase{"REP", "\"Nunca\""}, MentionCase{"REP", "dentro de 5 minutos"}));

TEST(AlarmHelp, NamesEveryRepeatChoice) {
    const std::string text = TextoAyuda("ALA");
    for (const CadaChoice& choice : kCadaChoices) {
        EXPECT_NE(text.find(choice.label), std::string::npos) << choice.label;
    }
}

// The codes are exact: another case or a blank around them is another topic.
TEST(HelpTopics, OnlyTheExactCodesHaveAText) {
    for (const char* code : {"", "ala", "Rep", "ALA ", " REP", "AL", "CAL"}) {
        EXPECT_EQ(TextoAyuda(code), "") << code;
    }
}

// The texts exist in mode 1 only; every other mode has none, for every topic.
TEST(HelpTopics, OnlyModeOneHasATextAndItIsTheDefault) {
    for (const char* code : {"ALA", "REP"}) {
        EXPECT_EQ(TextoAyuda(code, 1), TextoAyuda(code)) << code;
        EXPECT_FALSE(TextoAyuda(code, 1).empty()) << code;
        for (const int mode : {0, 2, -1, 11}) {
            EXPECT_EQ(TextoAyuda(code, mode), "") << code << " mode " << mode;
        }
    }
    EXPECT_EQ(TextoAyuda("XYZ", 2), "");
}

}  // namespace
}  // namespace vt
