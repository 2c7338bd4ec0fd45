#pragma once
#include <array>
#include <cstddef>
#include <optional>

#include "shell/main_view.h"
#include "shell/qt_key_first_dialog.h"

class QComboBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace vt {

// The repeat-later dialog, frmRepetir: a reminder has come due and the user says when it is to
// come back (one of the ten delays of kRepeatChoices) or that it never comes back ("Nunca").
// Escape, Enter and the window's close button all mean the first delay, "5 Minutos": a stray
// key must never lose a reminder, so only the "Nunca" button drops one. The dialog sees the
// keys before its controls, so Enter is "5 Minutos" even on a focused delay button or on
// "Nunca"; Space still presses the focused button, as everywhere else.
class FrmRepetir : public KeyFirstDialog {
    Q_OBJECT

public:
    static constexpr size_t kChoices = 10;

    explicit FrmRepetir(const RepeatPrompt& prompt, QWidget* parent = nullptr);

    // Shows the dialog modally over parent (hidden or not) and waits for the answer: the index
    // of the chosen delay, or nothing for "Nunca".
    static std::optional<int> ask(QWidget* parent, const RepeatPrompt& prompt);

    // The answer so far. It starts as the first delay, so a dialog ended any other way (the
    // program closing under it) still brings the reminder back.
    std::optional<int> choice() const { return m_choice; }

    QLabel* lblFecha() const { return m_lblFecha; }
    QPlainTextEdit* txtTexto() const { return m_txtTexto; }
    QComboBox* cboTiempo() const { return m_cboTiempo; }
    QPushButton* cmdTiempo(int index) const { return m_cmdTiempo.at(static_cast<size_t>(index)); }
    QPushButton* cmdOk() const { return m_cmdOk; }
    QPushButton* cmdNunca() const { return m_cmdNunca; }

public slots:
    // Escape and the close button land here: they are "5 Minutos", never a dismissal.
    void reject() override;

protected:
    void onEnterKey() override { choose(0); }
    void showEvent(QShowEvent* event) override;

private:
    void choose(int index);
    void dropReminder();
    void comeForward();

    QLabel* m_lblFecha = nullptr;
    QPlainTextEdit* m_txtTexto = nullptr;
    QComboBox* m_cboTiempo = nullptr;
    std::array<QPushButton*, kChoices> m_cmdTiempo{};
    QPushButton* m_cmdOk = nullptr;
    QPushButton* m_cmdNunca = nullptr;
    std::optional<int> m_choice = 0;
};

}  // namespace vt
