#pragma once
#include <optional>
#include <string>

#include "shell/qt_key_first_dialog.h"
#include "store/app_paths.h"

class QComboBox;
class QPlainTextEdit;
class QRadioButton;

namespace vt {

class Busy;
class Clock;
class Dialogs;

// The mark-task dialog, frmMarcar ("Tareas"): Enter in the task box marks the typed task; the
// whole log is in the editor below, where Enter saves, Shift+Enter starts a new line, and
// Escape anywhere asks before dropping edits. The rules are the core's (tasks/mark_task.h).
class FrmMarcar : public KeyFirstDialog {
    Q_OBJECT

public:
    FrmMarcar(Dialogs& dialogs, const Clock& clock, Busy& busy, const AppPaths& paths, QWidget* parent = nullptr);

    // Shows the dialog modally and returns the new current task: the marked one, or the last of
    // today after a saved edit (which may be ""); nothing when the dialog closed without either.
    static std::optional<std::string> marcar(QWidget* parent, Dialogs& dialogs, const Clock& clock, Busy& busy,
                                             const AppPaths& paths);

    std::optional<std::string> tareaActual() const { return m_tareaActual; }
    bool logChanged() const { return m_logChanged; }

    QComboBox* cboTarea() const { return m_cboTarea; }
    QRadioButton* optOrden(int index) const { return index == 0 ? m_optUltimoUso : m_optNombre; }
    QPlainTextEdit* txtLog() const { return m_txtLog; }

public slots:
    // Escape and the close button: edits are only dropped when the user says so.
    void reject() override;

protected:
    void onEnterKey() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fillTaskList();
    void markTask();
    void saveLog();

    Dialogs& m_dialogs;
    const Clock& m_clock;
    Busy& m_busy;
    AppPaths m_paths;

    QComboBox* m_cboTarea = nullptr;
    QRadioButton* m_optUltimoUso = nullptr;
    QRadioButton* m_optNombre = nullptr;
    QPlainTextEdit* m_txtLog = nullptr;
    bool m_logChanged = false;
    std::optional<std::string> m_tareaActual;
};

}  // namespace vt
