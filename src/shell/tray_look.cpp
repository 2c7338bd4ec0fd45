#include "shell/tray_look.h"

#include "store/app_state.h"
#include "store/utf8.h"

namespace vt {

std::optional<TrayImage> ChooseTrayImage(int stage, std::string_view today_mode, bool repetition_showing,
                                         bool phase_on) {
    if (repetition_showing) {
        return phase_on ? TrayImage::BolaNegra : TrayImage::BolaHelp;
    }
    switch (stage) {
        case 0:
            return TrayImage::BolaHelp;
        case 1:
            return TrayImage::BolaB1;
        case 2:
            return TrayImage::BolaA1;
        case 3:
            return TrayImage::BolaA2;
        case 4:
            return TrayImage::BolaA3;
        case 5:
            return today_mode == "C" ? TrayImage::BolaB2 : TrayImage::BolaA4;
        case 6:
            return phase_on ? TrayImage::BolaRoja : TrayImage::BolaNegra;
        case 7:
            return TrayImage::BolaRoja;
        case 8:
            return phase_on ? TrayImage::BolaAmarilla : TrayImage::BolaNegra;
        case 9:
            return TrayImage::BolaAmarilla;
        case 10:
            return phase_on ? TrayImage::BolaVerde : TrayImage::BolaNegra;
        case 11:
            return TrayImage::BolaVerde;
        default:
            return std::nullopt;
    }
}

std::string TrayTipText(std::string_view current_task) {
    if (current_task.empty()) {
        return "No hay ninguna tarea marcada.";
    }
    return "Última tarea: " + std::string(current_task);
}

std::u32string TrayTipField(std::string_view text) {
    std::u32string field = Utf8ToUtf32(text);
    field.push_back(U'\0');
    field.resize(kTrayTipLength, U' ');
    return field;
}

std::string TrayTipShown(const std::u32string& field) {
    return Utf32ToUtf8(field.substr(0, field.find(U'\0')));
}

TrayModel::TrayModel(std::string_view title) : tip_(TrayTipField(title)) {}

void TrayModel::Tick(const AppState& state) {
    phase_on_ = !phase_on_;
    if (const auto image = ChooseTrayImage(state.DepartureStage, state.TodayMode, state.RepetitionShowing, phase_on_)) {
        image_ = *image;
    }
    tip_ = TrayTipField(TrayTipText(state.TareaActual));
}

}  // namespace vt
