#pragma once
#include <array>
#include <string>

#include "shell/qt_key_first_dialog.h"

class QCheckBox;
class QPushButton;

namespace vt {

class Dialogs;
class TimeBox;

// The weekly schedule, frmConfig: for each weekday the hours to work and whether the day is
// worked in one stretch ("Jornada continua"). Enter accepts and Escape cancels wherever the
// focus is; the times are checked on "Aceptar", in order, and the first refused one keeps the
// dialog open with nothing taken.
class FrmConfig : public KeyFirstDialog {
    Q_OBJECT

public:
    explicit FrmConfig(Dialogs& dialogs, QWidget* parent = nullptr);

    // Shows the schedule modally on these values (Monday = 1, slot 0 unused). They are changed
    // only when the user accepts; returns whether the user did.
    static bool edit(QWidget* parent, Dialogs& dialogs, std::array<std::string, 8>& hours,
                     std::array<std::string, 8>& modes);

    // Row i (0 = Monday) shows hours[i + 1], ticked when modes[i + 1] is "C".
    void load(const std::array<std::string, 8>& hours, const std::array<std::string, 8>& modes);
    // What "Aceptar" took; the loaded values until then.
    const std::array<std::string, 8>& dayHours() const { return m_hours; }
    const std::array<std::string, 8>& dayModes() const { return m_modes; }

    TimeBox* txtHora(int row) const { return m_txtHora.at(static_cast<size_t>(row)); }
    QCheckBox* chkContinua(int row) const { return m_chkContinua.at(static_cast<size_t>(row)); }

protected:
    void onEnterKey() override { onAceptar(); }

private:
    static constexpr size_t kDays = 7;

    void onAceptar();

    std::array<TimeBox*, kDays> m_txtHora{};
    std::array<QCheckBox*, kDays> m_chkContinua{};
    QPushButton* m_cmdAceptar = nullptr;
    QPushButton* m_cmdCancelar = nullptr;
    std::array<std::string, 8> m_hours;
    std::array<std::string, 8> m_modes;
};

}  // namespace vt
