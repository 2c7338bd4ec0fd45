#pragma once
#include "agenda/entry_editor_dialog.h"
#include "agenda/repetition_editor.h"

namespace vt {

// The repetition editor, frmRepeticion: date, time and text of a one-shot reminder. The boxes
// are copied into a RepetitionForm and the core checks it; the dialog only puts the focus where
// the core says.
class FrmRepeticion : public EntryEditorDialog {
    Q_OBJECT

public:
    FrmRepeticion(Dialogs& dialogs, const Clock& clock, QWidget* parent = nullptr);

    // Shows the editor modally on `form` (OpenRepetitionForm's). On Save `form` holds what was
    // accepted, checked and with its short forms converted; otherwise it is left as it was.
    static EditorAction edit(QWidget* parent, Dialogs& dialogs, const Clock& clock, RepetitionForm& form);

    void load(const RepetitionForm& form);
    const RepetitionForm& form() const { return m_form; }

protected:
    std::optional<EditorBox> checkTypedForm(DateTime now) override;

private:
    RepetitionForm m_form;
};

}  // namespace vt
