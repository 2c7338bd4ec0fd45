#include "agenda/alarm_dialog.h"

#include <QComboBox>
#include <QLabel>
#include <QLayout>
#include <array>

namespace vt {

namespace {
constexpr std::array<const char*, 4> kHelpLabels{
    "Prioridad alta: \"!\" por delante.",
    "No mostrar en el calendario: \"-\" por delante.",
    "Los años de aniversarios con formato (9999)",
    "A partir de una fecha concreta <ddmmyy>",
};
}  // namespace

FrmAlarma::FrmAlarma(Dialogs& dialogs, const Clock& clock, QWidget* parent)
    : EntryEditorDialog(dialogs, clock, "ALA", &ConfirmDeleteAlarm, parent) {
    setObjectName(QStringLiteral("frmAlarma"));
    setWindowTitle(QStringLiteral("Alarma"));

    // Tab goes date, time, repeat, text, then the buttons.
    m_cboCada = new QComboBox(this);
    m_cboCada->setObjectName(QStringLiteral("cboCada"));
    for (const CadaChoice& choice : kCadaChoices) {
        m_cboCada->addItem(QString::fromUtf8(choice.label.data(), static_cast<qsizetype>(choice.label.size())));
    }
    addBoxRow("Repetir:", m_cboCada);
    addTextRow();
    for (size_t i = 0; i < kHelpLabels.size(); ++i) {
        auto* help = new QLabel(QString::fromUtf8(kHelpLabels[i]), this);
        help->setObjectName(QStringLiteral("lblAyuda(%1)").arg(i));
        layout()->addWidget(help);
    }
    finishWithButtons();
    load(m_form);
}

EditorAction FrmAlarma::edit(QWidget* parent, Dialogs& dialogs, const Clock& clock, AlarmForm& form) {
    FrmAlarma dialog(dialogs, clock, parent);
    dialog.load(form);
    dialog.exec();
    if (dialog.action() == EditorAction::Save) {
        form = dialog.form();
    }
    return dialog.action();
}

void FrmAlarma::load(const AlarmForm& form) {
    m_form = form;
    showLoaded(form.fecha, form.hora, form.texto, form.can_delete);
    m_cboCada->setCurrentIndex(form.cada);
}

std::optional<EditorBox> FrmAlarma::checkTypedForm(DateTime now) {
    AlarmForm typed = m_form;
    copyBoxesTo(typed.fecha, typed.hora, typed.texto);
    typed.cada = m_cboCada->currentIndex();
    const std::optional<EditorBox> refused = CheckAlarmForm(typed, now, dialogs());
    showChecked(typed.fecha, typed.hora);
    if (!refused) {
        m_form = typed;
    }
    return refused;
}

void FrmAlarma::focusBox(EditorBox box) {
    if (box == EditorBox::Cada) {
        m_cboCada->setFocus(Qt::OtherFocusReason);
        return;
    }
    EntryEditorDialog::focusBox(box);
}

}  // namespace vt
