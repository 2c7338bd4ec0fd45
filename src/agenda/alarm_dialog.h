#pragma once
#include "agenda/alarm_editor.h"
#include "agenda/entry_editor_dialog.h"

class QComboBox;

namespace vt {

// The alarm editor, frmAlarma: an entry editor with a repeat choice between the time and the
// text. The boxes are copied into an AlarmForm and the core checks it; the dialog only puts the
// focus where the core says.
class FrmAlarma : public EntryEditorDialog {
    Q_OBJECT

public:
    FrmAlarma(Dialogs& dialogs, const Clock& clock, QWidget* parent = nullptr);

    // Shows the editor modally on `form` (OpenAlarmForm's). On Save `form` holds what was
    // accepted, checked and with its short forms converted; otherwise it is left as it was.
    static EditorAction edit(QWidget* parent, Dialogs& dialogs, const Clock& clock, AlarmForm& form);

    void load(const AlarmForm& form);
    // What "Aceptar" took; the loaded form until then.
    const AlarmForm& form() const { return m_form; }

protected:
    std::optional<EditorBox> checkTypedForm(DateTime now) override;
    void focusBox(EditorBox box) override;

private:
    QComboBox* m_cboCada = nullptr;
    AlarmForm m_form;
};

}  // namespace vt
