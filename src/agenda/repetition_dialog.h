#pragma once
#include <QDialog>

#include "agenda/repetition_editor.h"

class QLineEdit;
class QPushButton;

namespace vt {

class Clock;
class Dialogs;
class TimeBox;

// The repetition editor, frmRepeticion: date, time and text of a one-shot reminder. The boxes
// are copied into a RepetitionForm and the core checks it; the dialog only puts the focus where
// the core says. Enter accepts, Escape cancels and F1 shows the help wherever the focus is.
class FrmRepeticion : public QDialog {
    Q_OBJECT

public:
    FrmRepeticion(Dialogs& dialogs, const Clock& clock, QWidget* parent = nullptr);

    // Shows the editor modally on `form` (OpenRepetitionForm's). On Save `form` holds what was
    // accepted, checked and with its short forms converted; otherwise it is left as it was.
    // The clock is read when "Aceptar" is pressed.
    static EditorAction edit(QWidget* parent, Dialogs& dialogs, const Clock& clock, RepetitionForm& form);

    void load(const RepetitionForm& form);
    const RepetitionForm& form() const { return m_form; }
    EditorAction action() const { return m_action; }

    void done(int result) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool handleDialogKey(const QKeyEvent& key);
    void leaveDateBox();
    void focusBox(EditorBox box);
    void onAceptar();
    void onBorrar();
    void onHelp();

    Dialogs& m_dialogs;
    const Clock& m_clock;
    QLineEdit* m_txtFecha = nullptr;
    TimeBox* m_txtHora = nullptr;
    QLineEdit* m_txtTexto = nullptr;
    QPushButton* m_cmdAceptar = nullptr;
    QPushButton* m_cmdCancelar = nullptr;
    QPushButton* m_cmdBorrar = nullptr;
    QPushButton* m_cmdHelp = nullptr;
    RepetitionForm m_form;
    EditorAction m_action = EditorAction::Cancel;
    bool m_closing = false;
};

}  // namespace vt
