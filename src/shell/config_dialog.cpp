#include "shell/config_dialog.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "shell/qt_time_box.h"

namespace vt {

namespace {
// Saturday and Sunday have no colon: that is how the dialog has always looked.
constexpr std::array<const char*, 7> kDayLabels{
    "Lunes:", "Martes:", "Miércoles:", "Jueves:", "Viernes:", "Sábado", "Domingo"};
constexpr const char* kContinuousMode = "C";
constexpr const char* kSplitMode = "P";
}  // namespace

FrmConfig::FrmConfig(Dialogs& dialogs, QWidget* parent) : KeyFirstDialog(parent) {
    setObjectName(QStringLiteral("frmConfig"));
    setWindowTitle(QStringLiteral("Configuración"));

    auto* layout = new QVBoxLayout(this);
    auto* rows = new QGridLayout;
    // Created row by row, so that Tab goes along each day's time and check box in turn.
    for (size_t i = 0; i < kDays; ++i) {
        const int row = static_cast<int>(i);
        auto* label = new QLabel(QString::fromUtf8(kDayLabels[i]), this);
        label->setObjectName(QStringLiteral("lblDia(%1)").arg(row));
        auto* box = new TimeBox(dialogs, this);
        box->setObjectName(QStringLiteral("txtHora(%1)").arg(row));
        // An empty time would be stored as "|C", which the next load reads as hours "|C".
        box->setRequired(true);
        label->setBuddy(box);
        auto* check = new QCheckBox(QStringLiteral("Jornada continua"), this);
        check->setObjectName(QStringLiteral("chkContinua(%1)").arg(row));
        rows->addWidget(label, row, 0);
        rows->addWidget(box, row, 1);
        rows->addWidget(check, row, 2);
        m_txtHora[i] = box;
        m_chkContinua[i] = check;
    }
    layout->addLayout(rows);

    m_cmdAceptar = new QPushButton(QStringLiteral("Aceptar"), this);
    m_cmdAceptar->setObjectName(QStringLiteral("cmdAceptar"));
    m_cmdCancelar = new QPushButton(QStringLiteral("Cancelar"), this);
    m_cmdCancelar->setObjectName(QStringLiteral("cmdCancelar"));
    // Reached by Tab but not taken by a click: a click would first pull the focus out of the
    // time box, whose own check would then show its message a second time after Aceptar's.
    for (QPushButton* button : {m_cmdAceptar, m_cmdCancelar}) {
        button->setFocusPolicy(Qt::TabFocus);
        button->setAutoDefault(false);
    }
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_cmdAceptar);
    buttons->addWidget(m_cmdCancelar);
    layout->addLayout(buttons);

    connect(m_cmdAceptar, &QPushButton::clicked, this, &FrmConfig::onAceptar);
    connect(m_cmdCancelar, &QPushButton::clicked, this, &FrmConfig::reject);

    // The dialog sees the keys before its controls: Escape in a time box cancels the dialog
    // rather than undoing the box.
    watchChildKeys();
}

bool FrmConfig::edit(QWidget* parent, Dialogs& dialogs, std::array<std::string, 8>& hours,
                     std::array<std::string, 8>& modes) {
    FrmConfig dialog(dialogs, parent);
    dialog.load(hours, modes);
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    hours = dialog.dayHours();
    modes = dialog.dayModes();
    return true;
}

void FrmConfig::load(const std::array<std::string, 8>& hours, const std::array<std::string, 8>& modes) {
    m_hours = hours;
    m_modes = modes;
    for (size_t i = 0; i < kDays; ++i) {
        m_txtHora[i]->showStoredValue(QString::fromStdString(hours[i + 1]));
        m_chkContinua[i]->setChecked(modes[i + 1] == kContinuousMode);
    }
}

void FrmConfig::onAceptar() {
    // The first refused time stops here: its box has shown the message and keeps the focus.
    for (TimeBox* box : m_txtHora) {
        if (!box->validate()) {
            return;
        }
    }
    for (size_t i = 0; i < kDays; ++i) {
        m_hours[i + 1] = m_txtHora[i]->text().toStdString();
        m_modes[i + 1] = m_chkContinua[i]->isChecked() ? kContinuousMode : kSplitMode;
    }
    accept();
}

}  // namespace vt
