#include "extras/help_texts.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "agenda/alarm_editor.h"

namespace vt {
namespace {

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    size_t start = 0;
    for (size_t end = text.find("\r\n"); end != std::string::npos; end = text.find("\r\n", start)) {
        lines.push_back(text.substr(start, end - start));
        start = end + 2;
    }
    lines.push_back(text.substr(start));
    return lines;
}

class HelpText : public ::testing::TestWithParam<const char*> {};

// One paragraph a line: every break is "\r\n", none is doubled or left at either end, and no
// line holds a stray "\r" or "\n" of its own.
TEST_P(HelpText, IsParagraphsJoinedByCrLf) {
    const std::string text = TextoAyuda(GetParam());
    const auto lines = Lines(text);
    ASSERT_GT(lines.size(), 3u);
    for (const std::string& line : lines) {
        EXPECT_FALSE(line.empty());
        EXPECT_EQ(line.find_first_of("\r\n"), std::string::npos) << line;
        EXPECT_NE(line.front(), ' ') << line;
        EXPECT_NE(line.back(), ' ') << line;
    }
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

TEST(HelpTopics, AreDifferentTexts) {
    EXPECT_NE(TextoAyuda("ALA"), TextoAyuda("REP"));
}

class UnknownTopic : public ::testing::TestWithParam<const char*> {};

TEST_P(UnknownTopic, HasNoText) {
    EXPECT_EQ(TextoAyuda(GetParam()), "");
}

// The codes are exact: another case or a blank around them is another topic.
INSTANTIATE_TEST_SUITE_P(Codes, UnknownTopic, ::testing::Values("", "ala", "Rep", "ALA ", " REP", "AL", "CAL", "ALAR"));

}  // namespace
}  // namespace vt
