#include "extras/help_texts.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "agenda/alarm_editor.h"

namespace vt {
namespace {

// One paragraph a line: every break is "\r\n", none is doubled or left at either end, and no
// line holds a stray "\r" or "\n" of its own or starts or ends with a blank.
TEST(HelpText, IsParagraphsJoinedByCrLf) {
    for (const char* topic : {"ALA", "REP"}) {
        const std::string text = TextoAyuda(topic);
        int lines = 0;
        for (size_t start = 0, end = 0; end != std::string::npos; start = end + 2, ++lines) {
            end = text.find("\r\n", start);
            const std::string line = text.substr(start, end == std::string::npos ? end : end - start);
            ASSERT_FALSE(line.empty()) << topic << " line " << lines;
            EXPECT_EQ(line.find_first_of("\r\n"), std::string::npos) << line;
            EXPECT_NE(line.front(), ' ') << line;
            EXPECT_NE(line.back(), ' ') << line;
        }
        EXPECT_GT(lines, 3) << topic;
    }
}

TEST(HelpMentions, CoversItsTopic) {
    // clang-format off
    const std::vector<std::pair<const char*, const char*>> cases{
        {"ALA", "\"!\" por delante"}, {"ALA", "\"-\" por delante"}, {"ALA", "(9999)"}, {"ALA", "<ddmmyy>"},
        {"ALA", "150324 es el 15/03/2024"}, {"ALA", "745 son las 07:45"}, {"ALA", "de lunes a viernes"},
        {"ALA", "las mensuales 7 días"}, {"ALA", "las anuales 14 días"}, {"ALA", "no se repiten 14 días"},
        {"ALA", "\"REP> \""}, {"ALA", "Boda (27) en 2025"},
        {"REP", "una sola vez"}, {"REP", "150324 es el 15/03/2024"}, {"REP", "(Sin mensaje)"}, {"REP", "interrogación"},
        {"REP", "5, 10, 15 o 30 minutos"}, {"REP", "1 semana"}, {"REP", "\"Nunca\""}, {"REP", "dentro de 5 minutos"}};
    // clang-format on
    for (const auto& [topic, words] : cases) {
        EXPECT_NE(TextoAyuda(topic).find(words), std::string::npos) << topic << ": " << words;
    }
}

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
