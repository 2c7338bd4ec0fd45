#pragma once
#include <QDialog>

class QKeyEvent;

namespace vt {

// A dialog that sees Enter, Escape and F1 before its controls do, so that these keys mean the
// same wherever the focus is: Escape in a time box closes the dialog instead of undoing the
// box, and Enter on a focused button or in a list of choices is the dialog's Enter.
// Every other key goes on to the control as usual.
class KeyFirstDialog : public QDialog {
    Q_OBJECT

protected:
    explicit KeyFirstDialog(QWidget* parent = nullptr);

    // Puts the dialog in front of every control it has now; called at the end of the
    // constructor, once they are all made. A control made later keeps its keys.
    void watchChildKeys();

    // Enter and keypad Enter.
    virtual void onEnterKey() = 0;
    // F1. A dialog without help leaves it as it is: false, and the key goes on to the control.
    virtual bool onHelpKey() { return false; }
    // Escape is reject(), which a dialog overrides when Escape is to mean something else.

    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool handleDialogKey(const QKeyEvent& key);
};

}  // namespace vt
