#include "shell/tray_look.h"

#include <gtest/gtest.h>

#include "store/app_state.h"
#include "store/utf8.h"
#include "test_names.h"

namespace vt {
namespace {

struct LookCase {
    int stage;
    const char* mode;
    std::optional<TrayImage> phase_on;
    std::optional<TrayImage> phase_off;
};
void PrintTo(const LookCase& c, std::ostream* os) {
    *os << test::TestName("stage " + std::string(c.stage < 0 ? "minus " : "") +
                          std::to_string(c.stage < 0 ? -c.stage : c.stage) + (*c.mode ? " mode " : " no mode") +
                          c.mode);
}

class StageImages : public ::testing::TestWithParam<LookCase> {};

TEST_P(StageImages, FixedStatesKeepTheirPictureAndBlinkingOnesAlternateWithTheDarkBall) {
    const auto& c = GetParam();
    EXPECT_EQ(ChooseTrayImage(c.stage, c.mode, false, true), c.phase_on);
    EXPECT_EQ(ChooseTrayImage(c.stage, c.mode, false, false), c.phase_off);
}

using T = TrayImage;
INSTANTIATE_TEST_SUITE_P(
    Stages, StageImages,
    ::testing::Values(LookCase{0, "C", T::BolaHelp, T::BolaHelp}, LookCase{1, "C", T::BolaB1, T::BolaB1},
                      LookCase{2, "P", T::BolaA1, T::BolaA1}, LookCase{3, "P", T::BolaA2, T::BolaA2},
                      LookCase{4, "P", T::BolaA3, T::BolaA3}, LookCase{5, "C", T::BolaB2, T::BolaB2},
                      LookCase{5, "P", T::BolaA4, T::BolaA4}, LookCase{5, "", T::BolaA4, T::BolaA4},
                      LookCase{6, "C", T::BolaRoja, T::BolaNegra}, LookCase{7, "C", T::BolaRoja, T::BolaRoja},
                      LookCase{8, "C", T::BolaAmarilla, T::BolaNegra},
                      LookCase{9, "C", T::BolaAmarilla, T::BolaAmarilla}, LookCase{10, "C", T::BolaVerde, T::BolaNegra},
                      LookCase{11, "C", T::BolaVerde, T::BolaVerde}, LookCase{-1, "C", std::nullopt, std::nullopt},
                      LookCase{12, "C", std::nullopt, std::nullopt}));

TEST(TrayLook, AWaitingReminderBlinksTheQuestionMarkWhateverTheStage) {
    for (int stage : {0, 5, 11, 42}) {
        EXPECT_EQ(ChooseTrayImage(stage, "C", true, true), TrayImage::BolaNegra);
        EXPECT_EQ(ChooseTrayImage(stage, "C", true, false), TrayImage::BolaHelp);
    }
}

// The field is the text, its NUL and blanks up to 64 characters, counted as characters, not
// bytes: "Última tarea: " is 14 characters (15 bytes), so 49 more fill 63 and leave the NUL the
// last; 50 fill the field and the NUL is lost with the cut.
TEST(TrayTip, IsFollowedByTheNulAndBlanksAndCountsCharactersNotBytesAtTheLimit) {
    const std::u32string nul(1, U'\0');
    const std::string task49(49, 'x');
    const std::string task50 = task49 + "ñ";
    EXPECT_EQ(TrayTipField(TrayTipText("")), U"No hay ninguna tarea marcada." + nul + std::u32string(34, U' '));
    EXPECT_EQ(TrayTipField(TrayTipText(task49)), Utf8ToUtf32("Última tarea: " + task49) + nul);
    EXPECT_EQ(TrayTipField(TrayTipText(task50)), Utf8ToUtf32("Última tarea: " + task50));
    EXPECT_EQ(TrayTipField(TrayTipText(std::string(80, 'y'))), Utf8ToUtf32("Última tarea: " + std::string(50, 'y')));
    // What the desktop shows stops at the NUL, or at the end of a full field.
    EXPECT_EQ(TrayTipShown(TrayTipField(TrayTipText(""))), "No hay ninguna tarea marcada.");
    EXPECT_EQ(TrayTipShown(TrayTipField(TrayTipText(task50))), "Última tarea: " + task50);
}

TEST(Utf8, MalformedBytesBecomeReplacementCharacters) {
    EXPECT_EQ(Utf8ToUtf32(std::string("a\xFF") + "b\xC3"), U"a\uFFFDb\uFFFD");
    EXPECT_EQ(Utf8ToUtf32("\xE2\x82x"), U"\uFFFDx");
    EXPECT_EQ(Utf32ToUtf8(Utf8ToUtf32("Año € 😀")), "Año € 😀");
}

TEST(TrayModel, BlinksOnEveryTickAndKeepsThePictureForAnUnknownStage) {
    TrayModel tray("VendrakoTimer");
    EXPECT_EQ(TrayTipShown(tray.TipField()), "VendrakoTimer");
    AppState state;
    state.DepartureStage = 6;
    tray.Tick(state);
    EXPECT_EQ(tray.Image(), TrayImage::BolaRoja);
    tray.Tick(state);
    EXPECT_EQ(tray.Image(), TrayImage::BolaNegra);
    state.DepartureStage = 99;
    tray.Tick(state);
    EXPECT_EQ(tray.Image(), TrayImage::BolaNegra) << "an unknown stage leaves the icon as it was";
    state.TareaActual = "Correo";
    tray.Tick(state);
    EXPECT_EQ(TrayTipShown(tray.TipField()), "Última tarea: Correo");
}

}  // namespace
}  // namespace vt
