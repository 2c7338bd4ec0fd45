#pragma once
#include <optional>
#include <string>

#include "agenda/alarm_editor.h"
#include "shell/qt_key_first_dialog.h"

class QGridLayout;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace vt {

class Clock;
class Dialogs;
class TimeBox;

// What the alarm and repetition editors share: the date, time and text boxes, the buttons
// "Aceptar", "Cancelar", "Borrar" and "Ayuda", and how they behave. Leaving the date box
// converts a short date; Enter accepts, Escape cancels and F1 shows the help wherever the focus
// is. The editor itself says which form its boxes fill and how the core checks it.
class EntryEditorDialog : public KeyFirstDialog {
    Q_OBJECT

public:
    EditorAction action() const { return m_action; }

    void done(int result) override;

protected:
    // Asks the user before "Borrar" deletes the entry; true to delete.
    using ConfirmDelete = bool (*)(Dialogs& dialogs);

    // Makes the date and time rows. `helpTopic` is the page of TextoAyuda that "Ayuda" and F1
    // show; `confirmDelete` is the editor's question before "Borrar".
    EntryEditorDialog(Dialogs& dialogs, const Clock& clock, const char* helpTopic, ConfirmDelete confirmDelete,
                      QWidget* parent);

    // The rest of the dialog, in the order the editor calls them: Tab follows the order in
    // which the controls are made.
    void addBoxRow(const char* caption, QWidget* box);
    void addTextRow();
    // The buttons under everything else. They are the last controls made, so the dialog then
    // starts watching the keys of all of them.
    void finishWithButtons();

    Dialogs& dialogs() const { return m_dialogs; }

    // The values of a form being loaded; the editor starts as cancelled.
    void showLoaded(const std::string& fecha, const std::string& hora, const std::string& texto, bool canDelete);
    void copyBoxesTo(std::string& fecha, std::string& hora, std::string& texto) const;
    // The date and time as the core's check left them: the short forms come back converted,
    // refused or not, so that the boxes show what counts.
    void showChecked(const std::string& fecha, const std::string& hora);

    // "Aceptar": copies the boxes into the editor's form and has the core check it at `now`.
    // Keeps the form when it passes; otherwise returns the box the core refused.
    virtual std::optional<EditorBox> checkTypedForm(DateTime now) = 0;
    virtual void focusBox(EditorBox box);

    void onEnterKey() override { onAceptar(); }
    bool onHelpKey() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void leaveDateBox();
    void onAceptar();
    void onBorrar();
    void onHelp();

    Dialogs& m_dialogs;
    const Clock& m_clock;
    const char* m_helpTopic;
    ConfirmDelete m_confirmDelete;
    QVBoxLayout* m_layout = nullptr;
    QGridLayout* m_rows = nullptr;
    QLineEdit* m_txtFecha = nullptr;
    TimeBox* m_txtHora = nullptr;
    QLineEdit* m_txtTexto = nullptr;
    QPushButton* m_cmdBorrar = nullptr;
    EditorAction m_action = EditorAction::Cancel;
    bool m_closing = false;
};

}  // namespace vt
