#include "shell/tray_look.h"

#include <gtest/gtest.h>

#include "store/app_state.h"
#include "store/utf8.h"

namespace vt {
namespace {

struct LookCase {
    int stage;
    const char* mode;
    std::optional<TrayImage> phase_on;
    std::optional<TrayImage> phase_off;
};

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

TEST(TrayTip, IsFollowedByTheNulAndBlanksAndCountsCharactersNotBytesAtTheLimit) {
    const std::u32string none = TrayTipField(TrayTipText(""));
    ASSERT_EQ(none.size(), 64u);
    EXPECT_EQ(none[29], U'\0');
    EXPECT_EQ(none[63], U' ');
    EXPECT_EQ(TrayTipShown(none), "No hay ninguna tarea marcada.");

    // "Última tarea: " is 14 characters (15 bytes); 49 more fill 63 and leave the NUL the last.
    const std::string task49(49, 'x');
    const std::u32string fits = TrayTipField(TrayTipText(task49));
    EXPECT_EQ(fits[63], U'\0');
    EXPECT_EQ(TrayTipShown(fits), "Última tarea: " + task49);

    // 50 characters fill the field and the NUL is lost with the cut.
    const std::string task50 = std::string(49, 'x') + "ñ";
    const std::u32string full = TrayTipField(TrayTipText(task50));
    ASSERT_EQ(full.size(), 64u);
    EXPECT_EQ(full.find(U'\0'), std::u32string::npos);
    EXPECT_EQ(TrayTipShown(full), "Última tarea: " + task50);

    const std::u32string cut = TrayTipField(TrayTipText(std::string(80, 'y')));
    EXPECT_EQ(TrayTipShown(cut), "Última tarea: " + std::string(50, 'y'));
}

TEST(Utf8, MalformedBytesBecomeReplacementCharacters) {
    EXPECT_EQ(Utf8ToUtf32("a\xFF"
                          "b\xC3"),
              U"a\uFFFDb\uFFFD");
    EXPECT_EQ(Utf8ToUtf32("\xE2\x82"
                          "x"),
              U"\uFFFDx");
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
