#include "agenda/repetition_dialog.h"

namespace vt {

FrmRepeticion::FrmRepeticion(Dialogs& dialogs, const Clock& clock, QWidget* parent)
    : EntryEditorDialog(dialogs, clock, "REP", &ConfirmDeleteRepetition, parent) {
    setObjectName(QStringLiteral("frmRepeticion"));
    setWindowTitle(QStringLiteral("Repetición"));
    addTextRow();
    finishWithButtons();
    load(m_form);
}

EditorAction FrmRepeticion::edit(QWidget* parent, Dialogs& dialogs, const Clock& clock, RepetitionForm& form) {
    FrmRepeticion dialog(dialogs, clock, parent);
    dialog.load(form);
    dialog.exec();
    if (dialog.action() == EditorAction::Save) {
        form = dialog.form();
    }
    return dialog.action();
}

void FrmRepeticion::load(const RepetitionForm& form) {
    m_form = form;
    showLoaded(form.fecha, form.hora, form.texto, form.can_delete);
}

std::optional<EditorBox> FrmRepeticion::checkTypedForm(DateTime now) {
    RepetitionForm typed = m_form;
    copyBoxesTo(typed.fecha, typed.hora, typed.texto);
    const std::optional<EditorBox> refused = CheckRepetitionForm(typed, now, dialogs());
    showChecked(typed.fecha, typed.hora);
    if (!refused) {
        m_form = typed;
    }
    return refused;
}

}  // namespace vt
