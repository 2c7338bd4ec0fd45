#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace vt {

// The pictures the tray icon can show.
enum class TrayImage {
    BolaHelp,   // question mark
    BolaNegra,  // dark ball: the "off" phase of every blinking state
    BolaRoja,
    BolaAmarilla,
    BolaVerde,
    BolaA1,  // four-portion ball of the split day, portions made in red
    BolaA2,
    BolaA3,
    BolaA4,
    BolaB1,  // two-portion ball of the continuous day
    BolaB2,
};

// The tip field holds 64 characters, its terminating NUL included.
inline constexpr int kTrayTipLength = 64;

// The picture for one tray tick: a fired reminder waiting for an answer blinks the question
// mark whatever the stage; otherwise the departure stage decides. Nothing for a stage outside
// 0..11: the icon is then left as it is.
std::optional<TrayImage> ChooseTrayImage(int stage, std::string_view today_mode, bool repetition_showing,
                                         bool phase_on);

// "Última tarea: <task>", or "No hay ninguna tarea marcada." when no task is marked.
std::string TrayTipText(std::string_view current_task);

// The 64-character tip field: the text and a NUL, padded with blanks; a longer text is cut at
// 64 characters and loses its NUL.
std::u32string TrayTipField(std::string_view text);

// What the desktop shows of a tip field: the characters before the NUL.
std::string TrayTipShown(const std::u32string& field);

struct AppState;

// The tray icon between two ticks of its one-second timer: the blink phase, the picture and
// the tip. Each tick inverts the phase first, then takes the picture and the tip afresh.
class TrayModel {
public:
    // Before the first tick: the dark ball and the program's title as the tip.
    explicit TrayModel(std::string_view title);

    void Tick(const AppState& state);

    TrayImage Image() const { return image_; }
    bool PhaseOn() const { return phase_on_; }
    // The 64-character tip field, NUL and padding included.
    const std::u32string& TipField() const { return tip_; }
    void SetTip(std::string_view text) { tip_ = TrayTipField(text); }

private:
    bool phase_on_ = false;
    TrayImage image_ = TrayImage::BolaNegra;
    std::u32string tip_;
};

}  // namespace vt
