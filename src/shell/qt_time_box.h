#pragma once
#include <QLineEdit>
#include <QString>

namespace vt {

class Dialogs;

// The one "hh:mm" entry box of the program (clock-in times, schedule, editors). Out of focus
// it shows "hh:mm" or nothing; while focused it holds up to four digits. Leaving it completes
// and checks the time; a refused time keeps the focus in the box.
class TimeBox : public QLineEdit {
    Q_OBJECT

public:
    explicit TimeBox(Dialogs& dialogs, QWidget* parent = nullptr);

    // The value last accepted, which Escape brings back. The owner keeps it up to date: the
    // box never changes it, because only the owner knows whether a time was really taken.
    void setStoredValue(const QString& value) { m_storedValue = value; }
    QString storedValue() const { return m_storedValue; }
    // The owner shows a value it has taken: it becomes the stored value and the text. A box
    // being edited shows it as digits, so that a refresh arriving while the user is in the box
    // neither cuts "07:45" to the four characters an edit allows nor leaves a ":" to type over.
    void showStoredValue(const QString& value);

    // A required box refuses to be left empty, with the same message as a wrong time. The
    // clock-in boxes may stay empty; a day's hours to work may not.
    void setRequired(bool required) { m_required = required; }

    // Completes and checks the text as leaving the box does, without emitting timeLeft.
    // Refused: the message is shown and the focus goes back into the box, text selected.
    // Accepted: the box shows the completed "hh:mm" (or stays empty).
    bool validate();

signals:
    // The user left the box with an accepted time ("hh:mm" or "").
    void timeLeft(const QString& text);

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void showEditText(const QString& text);
    void showCompleted(const QString& text);
    void takeFocusBack();
    bool isTakingFocusBack() const { return m_takingFocusBack; }

    Dialogs& m_dialogs;
    QString m_storedValue;
    bool m_takingFocusBack = false;
    bool m_required = false;
};

}  // namespace vt
